#include <algorithm>
#include <charconv>
#include <istream>
#include <stdexcept>
#include <string_view>

#include "kiv/host/recorder.h"
#include "kiv/host/utf8.h"

namespace Kiv_v4::host {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD"; // U+FFFD

std::string quoted(std::string_view text)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string result = "\"";
    while (!text.empty()) {
        const auto character = firstCharacter(text);
        const auto bytes = text.substr(0, character.length == 0 ? 1 : character.length);
        const auto byte = static_cast<unsigned char>(bytes.front());
        if (character.length == 0) {
            result += kReplacement;
        } else if (byte == '"' || byte == '\\') {
            result += {'\\', bytes.front()};
        } else if (byte < ' ') {
            result += {'\\', 'u', '0', '0', digits[byte >> 4U], digits[byte & 15U]};
        } else {
            result += bytes;
        }
        text.remove_prefix(bytes.size());
    }
    return result + '"';
}

/// Reads what `jsonLine` wrote: one flat object, the members in any order.
class RecordReader
{
public:
    explicit RecordReader(std::string_view line) : _rest(line) {}

    Record read()
    {
        Record record;
        expect('{');
        do {
            const auto key = string();
            expect(':');
            if (key == "id") {
                record.id = number<std::uint64_t>();
            } else if (key == "cause") {
                record.cause = number<std::uint64_t>();
            } else if (key == "time") {
                record.time = number<double>();
            } else if (key == "kind") {
                record.kind = string();
            } else if (key == "text") {
                record.text = string();
            } else {
                throw std::runtime_error("unknown member '" + key + "'");
            }
        } while (take(','));
        expect('}');
        return record;
    }

private:
    void skipBlanks()
    {
        _rest.remove_prefix(std::min(_rest.find_first_not_of(" \t\r"), _rest.size()));
    }

    bool take(char c)
    {
        skipBlanks();
        const auto found = _rest.starts_with(c);
        if (found) {
            _rest.remove_prefix(1);
        }
        return found;
    }

    void expect(char c)
    {
        if (!take(c)) {
            throw std::runtime_error(std::string("expected '") + c + "'");
        }
    }

    template <class Number>
    Number number()
    {
        skipBlanks();
        Number value{};
        const auto read = std::from_chars(_rest.data(), _rest.data() + _rest.size(), value);
        if (read.ec != std::errc()) {
            throw std::runtime_error("expected a number");
        }
        _rest.remove_prefix(static_cast<std::size_t>(read.ptr - _rest.data()));
        return value;
    }

    char next()
    {
        if (_rest.empty()) {
            throw std::runtime_error("a text has no end");
        }
        const auto c = _rest.front();
        _rest.remove_prefix(1);
        return c;
    }

    std::string string()
    {
        expect('"');
        std::string text;
        for (auto c = next(); c != '"'; c = next()) {
            text += c == '\\' ? escaped() : c;
        }
        return text;
    }

    /// The character that is meant by those after a backslash. `jsonLine` writes few of them; other
    /// programs that pass a recording on may write all.
    char escaped()
    {
        const auto c = next();
        if (c != 'u') {
            constexpr std::string_view names = "\"\\/bfnrt";
            constexpr std::string_view meant = "\"\\/\b\f\n\r\t";
            const auto index = names.find(c);
            if (index == names.npos) {
                throw std::runtime_error(std::string("unknown escape '\\") + c + "'");
            }
            return meant[index];
        }
        unsigned code = 0;
        const auto digits = _rest.substr(0, 4);
        const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), code, 16);
        if (read.ptr != digits.data() + 4 || code >= 0x80) {
            throw std::runtime_error("expected four digits of an ASCII character");
        }
        _rest.remove_prefix(4);
        return static_cast<char>(code);
    }

    std::string_view _rest;
};

/// With microseconds, the same in every locale.
std::string secondsText(double seconds)
{
    char digits[64];
    const auto end =
        std::to_chars(std::begin(digits), std::end(digits), seconds, std::chars_format::fixed, 6)
            .ptr;
    return {digits, end};
}

} // namespace

std::string jsonLine(const Record& record)
{
    return "{\"id\":" + std::to_string(record.id) + ",\"cause\":" + std::to_string(record.cause) +
           ",\"time\":" + secondsText(record.time) + ",\"kind\":" + quoted(record.kind) +
           ",\"text\":" + quoted(record.text) + "}";
}

std::vector<Record> readRecords(std::istream& lines)
{
    std::vector<Record> records;
    std::size_t number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        if (line.find_first_not_of(" \t\r") == line.npos) {
            continue;
        }
        try {
            records.push_back(RecordReader(line).read());
        } catch (const std::runtime_error& error) {
            throw std::runtime_error("line " + std::to_string(number) +
                                     ": not a record: " + error.what());
        }
    }
    return records;
}

} // namespace Kiv_v4::host
