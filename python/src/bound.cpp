#include "bound.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>
#include <vector>

#include "contracts.h"
#include "managers.h"
#include "overrides.h"

namespace bound {

namespace {

bool isUpper(char c)
{
    return std::isupper(static_cast<unsigned char>(c)) != 0;
}

bool isLower(char c)
{
    return std::islower(static_cast<unsigned char>(c)) != 0;
}

std::vector<void (*)()>& clearings()
{
    static std::vector<void (*)()> all;
    return all;
}

} // namespace

std::string snakeCase(std::string_view name)
{
    std::string result;
    for (std::size_t at = 0; at < name.size(); ++at) {
        const auto c = name[at];
        const auto next = at + 1 < name.size() ? name[at + 1] : '\0';
        if (isUpper(c) && at > 0 && name[at - 1] != '_' &&
            (!isUpper(name[at - 1]) || isLower(next))) {
            result += '_';
        }
        result += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return result;
}

std::string constantCase(std::string_view name)
{
    if (name.size() > 1 && name[0] == 'k' && isUpper(name[1])) {
        name.remove_prefix(1);
    }
    auto result = snakeCase(name);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return result;
}

const char* contract(const std::string& key)
{
    const auto* const end = kContracts + kNbContracts;
    const auto* const found =
        std::lower_bound(kContracts, end, key, [](const Contract& entry, const std::string& k) {
            return std::string_view(entry.key) < k;
        });
    if (found == end || found->key != key) {
        throw std::logic_error("no contract of '" + key + "' in the headers");
    }
    return found->text;
}

void atExit(void (*clear)())
{
    clearings().push_back(clear);
}

void refuse(const PythonHalf& half, const nb::object& name)
{
    const auto text =
        nb::str("{} must define '{}'").format(half.self().type().attr("__name__"), name);
    PyErr_SetObject(PyExc_NotImplementedError, text.ptr());
    throw nb::python_error();
}

void requireManager()
{
    try {
        kiv::UndoableCommandMgr::initializeInstance(std::make_shared<kiv::UndoableCommandMgr>());
    } catch (const std::invalid_argument&) {
        return;
    }
    kiv::UndoableCommandMgr::initializeInstance(nullptr);
    throw std::runtime_error("no command manager is installed");
}

void bindBookkeeping(nb::module_& module)
{
    module.def("_public_names", [] {
        std::vector<std::string> names;
        for (std::size_t index = 0; index < kNbContracts; ++index) {
            names.emplace_back(kContracts[index].key);
        }
        return names;
    });
    module.def("_clear_all", [] {
        for (auto clear = clearings().rbegin(); clear != clearings().rend(); ++clear) {
            (*clear)();
        }
    });
}

} // namespace bound
