#include "quietStreams.h"

namespace Kiv_v4::assimp {

QuietStream::QuietStream(std::ostream& stream) : _stream(stream), _target(stream.rdbuf())
{
    if (_target) {
        _stream.rdbuf(this);
    }
}

QuietStream::~QuietStream()
{
    if (_stream.rdbuf() == this) {
        _stream.rdbuf(_target);
    }
}

QuietStream::int_type QuietStream::overflow(int_type c)
{
    if (isQuiet() || traits_type::eq_int_type(c, traits_type::eof())) {
        return traits_type::not_eof(c);
    }
    return _target->sputc(traits_type::to_char_type(c));
}

std::streamsize QuietStream::xsputn(const char* text, std::streamsize size)
{
    return isQuiet() ? size : _target->sputn(text, size);
}

int QuietStream::sync()
{
    return isQuiet() ? 0 : _target->pubsync();
}

} // namespace Kiv_v4::assimp
