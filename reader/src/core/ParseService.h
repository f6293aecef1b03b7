// State of the AAMVA parsing service; ZyrReader_ParseAAMVA refuses to run while it is down.
#ifndef ZYR_CORE_PARSE_SERVICE_H
#define ZYR_CORE_PARSE_SERVICE_H

#include <cstdint>
#include <mutex>

namespace zyr {

class ParseService {
public:
    static ParseService& instance();

    int32_t initialise(); // starting twice is accepted
    int32_t shutdown();   // ZYR_ERR_NOT_INITIALISED when not running
    bool initialised() const;

private:
    mutable std::mutex mutex_;
    bool initialised_ = false;
};

} // namespace zyr

#endif
