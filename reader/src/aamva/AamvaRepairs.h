// What the parser set right in off-standard card data, one line per repair, so that the log shows
// which cards were off-standard and how. Clean cards note nothing and allocate nothing.
#ifndef ZYR_AAMVA_REPAIRS_H
#define ZYR_AAMVA_REPAIRS_H

#include <string>
#include <vector>

namespace zyr {

class AamvaRepairs {
public:
    void note(const char* format, ...) __attribute__((format(printf, 2, 3)));

    const std::vector<std::string>& lines() const { return lines_; }

private:
    std::vector<std::string> lines_;
};

} // namespace zyr

#endif
