#pragma once

#include <ostream>
#include <streambuf>
#include <thread>

namespace Kiv_v4::assimp {

/// While it lives, drops the output to a stream of the thread that made it, but not that of others.
/// Some importers print to the standard streams instead of reporting errors.
class QuietStream : private std::streambuf
{
public:
    explicit QuietStream(std::ostream& stream);
    QuietStream(const QuietStream&) = delete;
    QuietStream& operator=(const QuietStream&) = delete;
    ~QuietStream() override;

private:
    int_type overflow(int_type c) override;
    std::streamsize xsputn(const char* text, std::streamsize size) override;
    int sync() override;

    [[nodiscard]] bool isQuiet() const noexcept { return std::this_thread::get_id() == _thread; }

    const std::thread::id _thread = std::this_thread::get_id();
    std::ostream& _stream;
    std::streambuf* const _target;
};

} // namespace Kiv_v4::assimp
