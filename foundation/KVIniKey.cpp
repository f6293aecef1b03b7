#include "KVIniKey.h"

#include <climits>
#include <cstdlib>
#include <strings.h>

KVIniKey::KVIniKey(const char* name, const char* value) : name(name ? name : ""), value(value ? value : "") {}

StringBuffer KVIniKey::GetName() const {
    return name;
}

StringBuffer KVIniKey::GetValue() const {
    return value;
}

int KVIniKey::GetValueInt() const {
    long v = std::strtol(value.str(), nullptr, 10);
    if (v > INT_MAX)
        return INT_MAX;
    if (v < INT_MIN)
        return INT_MIN;
    return static_cast<int>(v);
}

bool KVIniKey::GetValueBool() const {
    return value.size() == 4 && strncasecmp(value.str(), "true", 4) == 0;
}

void KVIniKey::SetValue(const char* text) {
    value = text ? text : "";
}

void KVIniKey::SetValue(int number) {
    value = StringBuffer(number);
}

void KVIniKey::SetValue(bool flag) {
    value = flag ? "true" : "false";
}
