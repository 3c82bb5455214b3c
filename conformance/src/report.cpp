#include <algorithm>
#include <cstdio>

#include "kiv/conformance/conformance.h"

namespace Kiv_v4::conformance {

namespace {

std::string counted(std::size_t count, const std::string& what)
{
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

std::size_t nbOf(const Report& report, Outcome::Status status)
{
    return static_cast<std::size_t>(
        std::count_if(report.outcomes.begin(), report.outcomes.end(),
                      [&](const Outcome& outcome) { return outcome.status == status; }));
}

const char* statusText(Outcome::Status status)
{
    return status == Outcome::Held ? "held" : status == Outcome::Broken ? "broken" : "skipped";
}

/// Lines that belong under a contract.
std::string lines(const Finding& finding)
{
    std::string text;
    const auto line = [&](const char* what, const std::string& value) {
        text += value.empty() ? std::string() : std::string("    ") + what + value + '\n';
    };
    line("item:     ", finding.item);
    line("doing:    ", finding.doing);
    line("expected: ", finding.expected);
    line("seen:     ", finding.seen);
    line("again by: ", "--seed " + std::to_string(finding.seed));
    return text;
}

std::string quoted(const std::string& text)
{
    std::string all = "\"";
    for (const auto c : text) {
        if (c == '"' || c == '\\') {
            all += '\\';
            all += c;
        } else if (static_cast<unsigned char>(c) < ' ') {
            char code[8];
            std::snprintf(code, sizeof code, "\\u%04x", static_cast<unsigned>(c));
            all += code;
        } else {
            all += c;
        }
    }
    return all + '"';
}

std::string escaped(const std::string& text)
{
    std::string all;
    for (const auto c : text) {
        switch (c) {
        case '&':
            all += "&amp;";
            break;
        case '<':
            all += "&lt;";
            break;
        case '>':
            all += "&gt;";
            break;
        case '"':
            all += "&quot;";
            break;
        default:
            // XML has no place for other control characters.
            all += static_cast<unsigned char>(c) < ' ' && c != '\n' ? '?' : c;
        }
    }
    return all;
}

std::string member(const char* name, const std::string& value)
{
    return quoted(name) + ": " + value;
}

std::string jsonOf(const Finding& finding)
{
    return '{' + member("item", quoted(finding.item)) + ", " +
           member("doing", quoted(finding.doing)) + ", " +
           member("expected", quoted(finding.expected)) + ", " +
           member("seen", quoted(finding.seen)) + ", " +
           member("seed", std::to_string(finding.seed)) + '}';
}

std::string jsonOf(const Outcome& outcome)
{
    std::string findings;
    for (const auto& finding : outcome.findings) {
        findings += (findings.empty() ? "\n      " : ",\n      ") + jsonOf(finding);
    }
    return "    {" + member("id", quoted(outcome.contract.id)) + ", " +
           member("statement", quoted(outcome.contract.statement)) + ",\n     " +
           member("advice", quoted(outcome.contract.advice)) + ",\n     " +
           member("status", quoted(statusText(outcome.status))) + ", " +
           member("reason", quoted(outcome.reason)) + ", " + quoted("findings") + ": [" + findings +
           "]}";
}

} // namespace

std::string text(const Report& report)
{
    std::string all;
    for (const auto& outcome : report.outcomes) {
        if (outcome.status == Outcome::Broken) {
            all += outcome.contract.id + ": " + outcome.contract.statement + '\n';
            for (const auto& finding : outcome.findings) {
                all += lines(finding);
            }
            all += "    to mend:  " + outcome.contract.advice + "\n\n";
        }
    }
    for (const auto& outcome : report.outcomes) {
        if (outcome.status == Outcome::Skipped) {
            all += outcome.contract.id + ": skipped, " + outcome.reason + '\n';
        }
    }
    const auto nbBroken = nbOf(report, Outcome::Broken);
    return all + report.candidate + ": " +
           (nbBroken == 0 ? std::string() : counted(nbBroken, "contract") + " broken, ") +
           counted(nbOf(report, Outcome::Held), "contract") + " held, " +
           std::to_string(nbOf(report, Outcome::Skipped)) + " skipped (seed " +
           std::to_string(report.seed) + ")\n";
}

std::string json(const Report& report)
{
    std::string outcomes;
    for (const auto& outcome : report.outcomes) {
        outcomes += (outcomes.empty() ? "\n" : ",\n") + jsonOf(outcome);
    }
    return "{\n  " + member("candidate", quoted(report.candidate)) + ",\n  " +
           member("seed", std::to_string(report.seed)) + ",\n  " +
           member("passed", report.passed() ? "true" : "false") + ",\n  " + quoted("contracts") +
           ": [" + outcomes + "\n  ]\n}\n";
}

std::string junit(const Report& report)
{
    std::string cases;
    for (const auto& outcome : report.outcomes) {
        cases += "  <testcase classname=\"" + escaped(report.candidate) + "\" name=\"" +
                 escaped(outcome.contract.id) + '"';
        if (outcome.status == Outcome::Held) {
            cases += "/>\n";
            continue;
        }
        cases += ">\n";
        if (outcome.status == Outcome::Skipped) {
            cases += "    <skipped message=\"" + escaped(outcome.reason) + "\"/>\n";
        }
        for (const auto& finding : outcome.findings) {
            cases += "    <failure message=\"" + escaped(outcome.contract.statement) + "\">" +
                     escaped(lines(finding) + outcome.contract.advice) + "</failure>\n";
        }
        cases += "  </testcase>\n";
    }
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuite name=\"" +
           escaped(report.candidate) + "\" tests=\"" + std::to_string(report.outcomes.size()) +
           "\" failures=\"" + std::to_string(nbOf(report, Outcome::Broken)) + "\" skipped=\"" +
           std::to_string(nbOf(report, Outcome::Skipped)) + "\">\n" + cases + "</testsuite>\n";
}

} // namespace Kiv_v4::conformance
