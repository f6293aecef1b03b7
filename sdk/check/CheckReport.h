// The checker's verdicts, one row per rule, printed as a table.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace plugincheck {

enum class Verdict { Pass, Fail, Skip };

struct RuleResult {
    std::string rule;
    Verdict verdict = Verdict::Skip;
    std::string detail;
};

class CheckReport {
public:
    void pass(const std::string& rule, const std::string& detail) { add(rule, Verdict::Pass, detail); }
    void fail(const std::string& rule, const std::string& detail) { add(rule, Verdict::Fail, detail); }
    void skip(const std::string& rule, const std::string& detail) { add(rule, Verdict::Skip, detail); }
    // Pass when problems is empty, else fail with the first few of them.
    void verdict(const std::string& rule, const std::vector<std::string>& problems, const std::string& passDetail);

    bool failed() const;
    const std::vector<RuleResult>& rows() const { return rows_; }
    void print(std::ostream& out) const;

private:
    void add(const std::string& rule, Verdict verdict, const std::string& detail);
    std::vector<RuleResult> rows_;
};

} // namespace plugincheck
