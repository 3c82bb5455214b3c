#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "terminal/pager.h"

namespace app {

/// When text is coloured. `Auto`: on a terminal that can, unless the user refuses with NO_COLOR.
enum class Colouring { Auto, Always, Never };

/// The standard output stream, written in large pieces. What does not fit the terminal goes through
/// the user's pager, for which `flush` waits.
///
/// A reader who goes away early (`kiv tree ... | head`) is no error: what is written afterwards is
/// dropped. Any other failure to write throws `std::system_error`.
class Output
{
public:
    Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    void write(std::string_view text);
    void line(std::string_view text);

    /// Hands over what is still held back. Not done by the destructor, which could not report.
    void flush();

    /// False when the reader has gone, so that making more is idle work.
    [[nodiscard]] bool isRead() const { return _isRead; }

    [[nodiscard]] bool isTerminal() const { return _isTerminal; }

    void setColouring(Colouring colouring) { _colouring = colouring; }
    [[nodiscard]] bool isColoured() const;

    /// From now on there is no pager.
    void endPaging() { _isPaged = false; }

private:
    void send();

    std::string _pending;
    std::optional<Pager> _pager;
    Colouring _colouring = Colouring::Auto;
    bool _isRead = true;
    const bool _isTerminal;
    bool _isPaged;
};

} // namespace app
