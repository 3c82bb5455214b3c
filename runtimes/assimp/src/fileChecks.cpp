#include "fileChecks.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <memory>
#include <sstream>
#include <system_error>
#include <vector>

#include "kiv/assimp/sceneFile.h"

namespace Kiv_v4::assimp {

namespace {

namespace fs = std::filesystem;

/// The counts of an OFF header, those of vertices and faces: "OFF 8 6 12", with line breaks and
/// comments anywhere. The key word may be missing; one with an n has the dimension before the
/// counts.
std::vector<std::string> offCounts(const std::string& header)
{
    std::vector<std::string> words;
    std::istringstream lines(header);
    for (std::string line; words.size() < 4 && std::getline(lines, line);) {
        std::istringstream rest(line.substr(0, line.find('#')));
        words.insert(words.end(), std::istream_iterator<std::string>(rest),
                     std::istream_iterator<std::string>());
    }
    words.resize(4);
    const auto& keyWord = words.front();
    const auto skipped = keyWord.ends_with("OFF") ? keyWord.find('n') == keyWord.npos ? 1 : 2 : 0;
    return {words.begin() + skipped, words.begin() + skipped + 2};
}

/// The counts of a PLY header: "element vertex 8".
std::vector<std::string> plyCounts(const std::string& header)
{
    std::vector<std::string> counts;
    std::istringstream lines(header.substr(0, header.find("\nend_header")));
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string word;
        std::string element;
        std::string count;
        if (words >> word >> element >> count && word == "element") {
            counts.push_back(count);
        }
    }
    return counts;
}

std::vector<std::string> declaredCounts(const std::string& file)
{
    const auto header = headerText(file);
    std::string keyWord;
    std::istringstream(header) >> keyWord;
    auto extension = fs::path(file).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    if (keyWord == "ply") {
        return plyCounts(header);
    }
    const auto isOff = extension == ".off" || (keyWord.ends_with("OFF") && keyWord.size() <= 6);
    return isOff ? offCounts(header) : std::vector<std::string>();
}

/// The number that `word` writes; the largest number if it is too large, 0 if it is not a number.
std::uintmax_t number(const std::string& word)
{
    std::uintmax_t value = 0;
    const auto read = std::from_chars(word.data(), word.data() + word.size(), value);
    return read.ec == std::errc::result_out_of_range ? std::numeric_limits<std::uintmax_t>::max()
                                                     : value;
}

} // namespace

std::string headerText(const std::string& file)
{
    constexpr std::size_t kHeaderSize = 1U << 14U;
    std::string header(kHeaderSize, '\0');
    std::ifstream stream(file, std::ios::binary);
    stream.read(header.data(), static_cast<std::streamsize>(header.size()));
    header.resize(static_cast<std::size_t>(stream.gcount()));
    std::replace(header.begin(), header.end(), '\r', '\n');
    return header;
}

void requireReadable(const std::string& file)
{
    std::error_code error;
    const auto status = fs::status(file, error);
    if (status.type() == fs::file_type::not_found || file.find('\0') != std::string::npos) {
        throw ImportError(file, "no such file");
    }
    if (status.type() == fs::file_type::none) {
        throw ImportError(file, error.message());
    }
    if (status.type() == fs::file_type::directory) {
        throw ImportError(file, "is a directory");
    }
    if (status.type() != fs::file_type::regular) {
        throw ImportError(file, "is not a regular file");
    }
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> opened(std::fopen(file.c_str(), "rb"),
                                                                 &std::fclose);
    if (!opened) {
        throw ImportError(file, std::generic_category().message(errno));
    }
}

void requirePlausibleCounts(const std::string& file)
{
    std::error_code error;
    const auto size = fs::file_size(file, error);
    for (const auto& count : declaredCounts(file)) {
        if (!error && number(count) > size) {
            throw ImportError(file, "its header counts " + count + " elements, its size is " +
                                        std::to_string(size) + " bytes");
        }
    }
}

} // namespace Kiv_v4::assimp
