#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "terminal/output.h"
#include "terminal/terminal.h"

namespace app {

/// Rows of texts in columns as wide as they must be; the last one may be long. Texts are made fit
/// for a terminal.
class Table
{
public:
    using Colour = std::string (Paint::*)(std::string_view) const;

    struct Column
    {
        std::string title{}; ///< There is a line of titles if a column has one.
        bool isNumber = false;
        Colour colour = nullptr;
    };

    explicit Table(std::vector<Column> columns);

    /// Takes a text for each column.
    void add(std::vector<std::string> row);

    [[nodiscard]] bool empty() const { return _rows.empty(); }

    void write(Output& output) const;

private:
    void measure(const std::vector<std::string>& row);
    void writeRow(const std::vector<std::string>& row, bool isTitle, Output& output) const;

    const std::vector<Column> _columns;
    std::vector<std::size_t> _widths;
    std::vector<std::vector<std::string>> _rows;
};

} // namespace app
