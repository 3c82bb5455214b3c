#include <algorithm>
#include <ctime>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include "kiv/attributes.h"
#include "kiv/hierarchy.h"
#include "kiv/hierarchy_v4_2.h"
#include "kiv/memory/runTime.h"
#include "kiv/pathString.h"
#include "kiv/selection.h"

// The rows of border.py in C++, one a line: the name, and nanoseconds for each item.
//
//     g++ -std=c++20 -O2 border.cpp -o border $(pkg-config --cflags --libs kiv-memory)

namespace {

using namespace Kiv_v4;

constexpr std::size_t kCount = 100000;

double cpuTime()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

/// Keeps the compiler from leaving the work away.
std::size_t sink = 0;

void measure(const char* name, const std::function<std::size_t()>& work)
{
    std::vector<double> times;
    for (int repetition = 0; repetition < 7; ++repetition) {
        const auto begin = cpuTime();
        sink += work();
        times.push_back(cpuTime() - begin);
    }
    std::nth_element(times.begin(), times.begin() + 3, times.end());
    std::cout << name << ' ' << times[3] / kCount << '\n';
}

} // namespace

int main()
{
    memory::RunTime runTime;
    auto& model = runTime.model();
    const auto top = model.make(model.root(), "group", "top");
    std::vector<std::string> names;
    for (std::size_t index = 0; index < kCount; ++index) {
        names.push_back("m" + std::to_string(index));
    }
    model.makeAll(top->path(), "mesh", names);
    const auto items = Hierarchy::hierarchy(top)->children();
    const auto selectAll = [&] {
        Selection all;
        for (const auto& item : items) {
            all.append(item);
        }
        return all;
    };
    const auto selection = selectAll();
    std::vector<std::string> texts;
    for (const auto& item : items) {
        texts.push_back(PathString::string(item->path()));
    }
    const auto attribute =
        Attributes::attributes(items.front())->addAttribute(Attribute::kDouble, "size");
    const auto size = std::static_pointer_cast<AttributeDouble>(attribute);

    measure("list the children", [&] { return Hierarchy::hierarchy(top)->children().size(); });
    measure("names and types, no items",
            [&] { return Hierarchy_v4_2::hierarchy(top)->childInfos(0, kCount).size(); });
    measure("the path of an item", [&] {
        std::vector<Path> paths;
        for (const auto& item : items) {
            paths.push_back(item->path());
        }
        return paths.size();
    });
    measure("select all", [&] { return selectAll().size(); });
    measure("is it selected", [&] {
        return static_cast<std::size_t>(
            std::count_if(items.begin(), items.end(),
                          [&](const auto& item) { return selection.contains(item->path()); }));
    });
    measure("all selected paths as text", [&] {
        std::vector<std::string> all;
        for (const auto& item : selection) {
            all.push_back(PathString::string(item->path()));
        }
        return all.size();
    });
    measure("a path from text", [&] {
        std::vector<Path> paths;
        for (const auto& text : texts) {
            paths.push_back(PathString::path(text));
        }
        return paths.size();
    });
    measure("read an attribute", [&] {
        double sum = 0;
        for (std::size_t index = 0; index < kCount; ++index) {
            sum += size->get();
        }
        return static_cast<std::size_t>(sum);
    });
    return sink == 0 ? 1 : 0;
}
