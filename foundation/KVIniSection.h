#pragma once

#include "KVIniKey.h"
#include "KVObjectPointerList.h"
#include "StringBuffer.h"

// One "[name]" block of an INI file with its keys in insertion order.
class KVIniSection {
public:
    // The name is the text between the brackets, untrimmed.
    explicit KVIniSection(const char* name);
    KVIniSection(const KVIniSection&) = delete;
    KVIniSection& operator=(const KVIniSection&) = delete;

    // Deletes every key, then the key list.
    virtual ~KVIniSection();
    virtual StringBuffer GetName() const;
    virtual KVObjectPointerList<KVIniKey>* GetKeys() const;
    // Appends the key; the section takes ownership.
    virtual void AddKey(KVIniKey* key);
    // First key whose name matches exactly (case-sensitive). When none does: with create, a new key
    // with value "" is appended and returned; without, null.
    virtual KVIniKey* FindKey(const char* name, bool create);
    // Removes and deletes the first key of that name; nothing when there is none.
    virtual void DeleteKey(const char* name);

private:
    StringBuffer name;
    KVObjectPointerList<KVIniKey>* keys; // owned, never null
};
