#include "CheckReport.h"

#include <algorithm>

namespace plugincheck {

void CheckReport::add(const std::string& rule, Verdict verdict, const std::string& detail) {
    rows_.push_back({rule, verdict, detail});
}

void CheckReport::verdict(const std::string& rule, const std::vector<std::string>& problems,
                          const std::string& passDetail) {
    if (problems.empty()) {
        pass(rule, passDetail);
        return;
    }
    constexpr size_t kShown = 3;
    std::string detail;
    for (size_t i = 0; i < problems.size() && i < kShown; ++i)
        detail += (i ? "; " : "") + problems[i];
    if (problems.size() > kShown)
        detail += "; and " + std::to_string(problems.size() - kShown) + " more";
    fail(rule, detail);
}

bool CheckReport::failed() const {
    return std::any_of(rows_.begin(), rows_.end(), [](const RuleResult& r) { return r.verdict == Verdict::Fail; });
}

void CheckReport::print(std::ostream& out) const {
    size_t width = 4;
    for (const RuleResult& r : rows_)
        width = std::max(width, r.rule.size());
    out << "Rule" << std::string(width - 4 + 2, ' ') << "Result  Details\n";
    for (const RuleResult& r : rows_) {
        const char* verdict = r.verdict == Verdict::Pass ? "pass" : r.verdict == Verdict::Fail ? "FAIL" : "skip";
        out << r.rule << std::string(width - r.rule.size() + 2, ' ') << verdict << "    " << r.detail << '\n';
    }
    const long failures = std::count_if(rows_.begin(), rows_.end(), [](const RuleResult& r) { return r.verdict == Verdict::Fail; });
    out << (failures ? std::to_string(failures) + " of " + std::to_string(rows_.size()) + " rules failed\n"
                     : "All rules passed\n");
}

} // namespace plugincheck
