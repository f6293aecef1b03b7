#include "ParseDouble.h"

#include <map>
#include <memory>

namespace {

struct State {
    ParseDouble::Script script;
    std::vector<std::string> log;
    std::map<const void*, std::unique_ptr<AAMVARecord>> handedOut;
};

State& state() {
    static State s;
    return s;
}

} // namespace

namespace ParseDouble {

void Reset(const Script& script) {
    state() = State();
    state().script = script;
}

Script& Current() { return state().script; }
const std::vector<std::string>& Log() { return state().log; }
int Outstanding() { return static_cast<int>(state().handedOut.size()); }

} // namespace ParseDouble

extern "C" {

bool ZyrReader_IsParsingInitialised(void) {
    state().log.push_back("IsParsingInitialised");
    return state().script.initialised;
}

int32_t ZyrReader_ParseInitialise(void) {
    State& s = state();
    s.log.push_back("ParseInitialise");
    if (s.script.initialiseCode == 0)
        s.script.initialised = true;
    return s.script.initialiseCode;
}

int32_t ZyrReader_ParseAAMVA(const uint8_t*, int32_t length, AAMVARecord** record, int32_t) {
    State& s = state();
    s.log.push_back("ParseAAMVA " + std::to_string(length));
    if (!s.script.initialised)
        return ZYR_ERR_NOT_INITIALISED;
    std::deque<int32_t>& codes = s.script.parseCodes;
    const int32_t code = codes.empty() ? 0 : codes.front();
    if (!codes.empty())
        codes.pop_front();
    if (code != 0)
        return code;
    auto copy = std::make_unique<AAMVARecord>(s.script.record ? *s.script.record : AAMVARecord{});
    *record = copy.get();
    s.handedOut[copy.get()] = std::move(copy);
    return 0;
}

int32_t ZyrReader_DestroyCachedObject(const void* object) {
    const bool known = state().handedOut.erase(object) == 1;
    state().log.push_back(known ? "Destroy" : "Destroy unknown");
    return known ? 0 : ZYR_ERR_UNKNOWN_HANDLE;
}

} // extern "C"
