#include "KVIniSection.h"

KVIniSection::KVIniSection(const char* name)
    : name(name ? name : ""), keys(new KVObjectPointerList<KVIniKey>()) {}

KVIniSection::~KVIniSection() {
    for (int i = 0; i < keys->GetCount(); ++i)
        delete keys->GetAt(i);
    keys->Clear();
    delete keys;
    keys = nullptr;
}

StringBuffer KVIniSection::GetName() const {
    return name;
}

KVObjectPointerList<KVIniKey>* KVIniSection::GetKeys() const {
    return keys;
}

void KVIniSection::AddKey(KVIniKey* key) {
    keys->Add(key);
}

KVIniKey* KVIniSection::FindKey(const char* keyName, bool create) {
    StringBuffer wanted(keyName ? keyName : "");
    for (int i = 0; i < keys->GetCount(); ++i) {
        KVIniKey* key = keys->GetAt(i);
        if (key->GetName() == wanted)
            return key;
    }
    if (!create)
        return nullptr;
    KVIniKey* key = new KVIniKey(wanted.str(), "");
    keys->Add(key);
    return key;
}

void KVIniSection::DeleteKey(const char* keyName) {
    KVIniKey* key = FindKey(keyName, false);
    if (key) {
        keys->Remove(key);
        delete key;
    }
}
