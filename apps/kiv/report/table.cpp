#include "report/table.h"

#include <algorithm>

namespace app {

Table::Table(std::vector<Column> columns) : _columns(std::move(columns)), _widths(_columns.size())
{}

void Table::add(std::vector<std::string> row)
{
    std::ranges::transform(row, row.begin(), printable);
    measure(row);
    _rows.push_back(std::move(row));
}

void Table::write(Output& output) const
{
    std::vector<std::string> titles;
    std::ranges::transform(_columns, std::back_inserter(titles), &Column::title);
    auto table = *this;
    table.measure(titles);
    if (std::ranges::any_of(titles, [](const auto& title) { return !title.empty(); })) {
        table.writeRow(titles, true, output);
    }
    for (const auto& row : _rows) {
        table.writeRow(row, false, output);
    }
}

void Table::measure(const std::vector<std::string>& row)
{
    for (std::size_t i = 0; i < row.size(); ++i) {
        _widths[i] = std::max(_widths[i], columns(row[i]));
    }
}

/// Columns without any text take no room.
void Table::writeRow(const std::vector<std::string>& row, bool isTitle, Output& output) const
{
    const Paint paint(output.isColoured());
    std::string line;
    std::size_t pending = 0; // blanks, which no line ends with
    for (std::size_t i = 0; i < row.size(); ++i) {
        const auto rest = _widths[i] - columns(row[i]);
        pending += _columns[i].isNumber ? rest : 0;
        if (!row[i].empty()) {
            const auto colour = isTitle ? &Paint::label : _columns[i].colour;
            line += std::string(pending, ' ') + (colour ? (paint.*colour)(row[i]) : row[i]);
            pending = 0;
        }
        pending += (_columns[i].isNumber ? 0 : rest) + (_widths[i] > 0 ? 2 : 0);
    }
    output.line(line);
}

} // namespace app
