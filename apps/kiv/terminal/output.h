#pragma once

#include <string>
#include <string_view>

namespace app {

/// The standard output stream, written in large pieces.
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

private:
    std::string _pending;
    bool _isRead = true;
    const bool _isTerminal;
};

} // namespace app
