#pragma once

#include "StringBuffer.h"

// One "name=value" entry of an INI section. Owners delete it as a KVIniKey, so it is final.
class KVIniKey final {
public:
    // A null value stores the empty string.
    KVIniKey(const char* name, const char* value);

    virtual StringBuffer GetName() const;
    virtual StringBuffer GetValue() const;
    // Leading decimal number of the value ("12abc" gives 12, "abc" and "" give 0); never throws.
    // Values beyond the int range are clamped to it.
    virtual int GetValueInt() const;
    // True only for "true" in any letter case; "1", "yes" and "" are false.
    virtual bool GetValueBool() const;
    virtual void SetValue(const char* value);
    virtual void SetValue(int value);
    // Stores "true" or "false".
    virtual void SetValue(bool value);

private:
    StringBuffer name;  // as given; the loader trims it before
    StringBuffer value; // raw text, quotes included
};
