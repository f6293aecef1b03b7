#include "ParseDouble.h"

#include <cstring>
#include <map>
#include <memory>

namespace {

struct State {
    ParseDouble::Script script;
    std::vector<std::string> log;
    std::vector<uint8_t> lastBytes;
    std::map<const void*, std::unique_ptr<AAMVARecord>> handedOut;
    std::map<const void*, int> numbers;
    int next = 1;
};

State& state() {
    static State s;
    return s;
}

} // namespace

namespace ParseDouble {

void Reset(const Script& script) {
    State& s = state();
    s.script = script;
    s.log.clear();
    s.lastBytes.clear();
    s.handedOut.clear();
    s.numbers.clear();
    s.next = 1;
}

Script& Current() {
    return state().script;
}

const std::vector<std::string>& Log() {
    return state().log;
}

int Outstanding() {
    return static_cast<int>(state().handedOut.size());
}

const std::vector<uint8_t>& LastBytes() {
    return state().lastBytes;
}

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

int32_t ZyrReader_ParseAAMVA(const uint8_t* data, int32_t length, AAMVARecord** record, int32_t reserved) {
    State& s = state();
    s.log.push_back("ParseAAMVA " + std::to_string(length));
    if (record == nullptr || reserved != 0)
        return ZYR_ERR_BAD_ARGUMENT;
    s.lastBytes.assign(data, data + (data != nullptr && length > 0 ? length : 0));
    if (!s.script.initialised)
        return ZYR_ERR_NOT_INITIALISED;
    int32_t code = 0;
    if (!s.script.parseCodes.empty()) {
        code = s.script.parseCodes.front();
        s.script.parseCodes.pop_front();
    }
    if (code != 0)
        return code;
    auto copy = std::make_unique<AAMVARecord>();
    if (s.script.record != nullptr)
        std::memcpy(copy.get(), s.script.record, sizeof(AAMVARecord));
    *record = copy.get();
    s.numbers[copy.get()] = s.next++;
    s.handedOut[copy.get()] = std::move(copy);
    return 0;
}

int32_t ZyrReader_DestroyCachedObject(const void* object) {
    State& s = state();
    auto it = s.handedOut.find(object);
    if (it == s.handedOut.end()) {
        s.log.push_back("Destroy unknown");
        return ZYR_ERR_UNKNOWN_HANDLE;
    }
    s.log.push_back("Destroy " + std::to_string(s.numbers[object]));
    s.handedOut.erase(it);
    return 0;
}

} // extern "C"
