#include "KVIniFile.h"

#include "KVBaseException.h"
#include "StringBufferException.h"
#include "StringBufferList.h"

#include <sys/stat.h>

namespace {

bool FileExists(const char* path) {
    struct stat info;
    return ::stat(path, &info) == 0;
}

bool IsEmpty(const char* text) {
    return text == nullptr || *text == '\0';
}

} // namespace

KVIniFile::KVIniFile() = default;

KVIniFile::~KVIniFile() {
    Clear();
    delete sections;
    sections = nullptr;
}

StringBuffer KVIniFile::GetFileName() const {
    return fileName;
}

void KVIniFile::SetByteShift(bool on, int amount) {
    shiftOn = on;
    shift = on ? amount : 0;
}

bool KVIniFile::Load(const char* file, bool throwOnError) {
    if (IsEmpty(file)) {
        if (throwOnError)
            throw KVBaseException("Cannot load Ini file with no file name");
        return false;
    }
    if (!FileExists(file)) {
        if (throwOnError)
            throw KVBaseException(StringBuffer("Cannot load Ini file: ") + StringBuffer(file) +
                                  StringBuffer(" does not exist"));
        return false;
    }
    fileName = file;
    Parse();
    return true;
}

bool KVIniFile::Reload() {
    if (fileName.isEmpty())
        return true;
    if (!FileExists(fileName.str()))
        return false;
    Parse();
    return true;
}

void KVIniFile::ShiftLine(StringBuffer& line, int amount) const {
    for (int i = 0; i < line.size(); ++i)
        line.setChar(static_cast<uint32_t>(i),
                     static_cast<char>(static_cast<unsigned char>(line[i]) + amount));
}

void KVIniFile::Parse() {
    Clear();
    if (!sections)
        sections = new KVObjectPointerList<KVIniSection>();

    StringBufferList lines;
    lines.LoadFromFile(fileName);

    KVIniSection* current = nullptr;
    for (int i = 0; i < lines.GetCount(); ++i) {
        StringBuffer line = lines.GetItem(i);
        if (shiftOn)
            ShiftLine(line, -shift);
        line.trim();
        const int length = line.size();
        if (length == 0 || line[0] == '#' || (length > 1 && line[0] == '/' && line[1] == '/'))
            continue;
        if (length > 1 && line[0] == '[' && line[length - 1] == ']') {
            StringBuffer name = line.SubString(1, static_cast<uint32_t>(length - 2));
            current = new KVIniSection(name.str());
            sections->Add(current);
            continue;
        }
        const int equals = line.find_first_of("=");
        if (equals < 0 || !current)
            continue;
        StringBuffer key = line.SubString(0, static_cast<uint32_t>(equals));
        StringBuffer value =
            line.SubString(static_cast<uint32_t>(equals + 1), static_cast<uint32_t>(length - equals - 1));
        key.trim();
        value.trim();
        current->AddKey(new KVIniKey(key.str(), value.str()));
    }
}

bool KVIniFile::Save(const char* file, bool throwOnError) {
    if (IsEmpty(file)) {
        if (throwOnError)
            throw KVBaseException("Cannot save Ini file with no file name");
        return false;
    }
    fileName = file;
    // Nothing was ever loaded or set: leave whatever is on disk alone.
    if (!sections)
        return true;

    StringBufferList lines;
    for (int s = 0; s < sections->GetCount(); ++s) {
        KVIniSection* section = sections->GetAt(s);
        StringBuffer header = StringBuffer("[") + section->GetName() + StringBuffer("]");
        if (shiftOn)
            ShiftLine(header, shift);
        lines.Add(header);
        KVObjectPointerList<KVIniKey>* keys = section->GetKeys();
        for (int k = 0; k < keys->GetCount(); ++k) {
            KVIniKey* key = keys->GetAt(k);
            StringBuffer line = key->GetName() + StringBuffer("=") + key->GetValue();
            if (shiftOn)
                ShiftLine(line, shift);
            lines.Add(line);
        }
    }
    try {
        lines.SaveToFile(fileName, false, true);
    } catch (const StringBufferException&) {
        // Only the throwing mode reports write failures; callers of the quiet mode rely on true.
        if (throwOnError)
            throw;
    }
    return true;
}

void KVIniFile::Clear() {
    if (!sections)
        return;
    for (int i = 0; i < sections->GetCount(); ++i)
        delete sections->GetAt(i);
    sections->Clear();
}

void KVIniFile::AddSection(KVIniSection* section) {
    if (!sections)
        sections = new KVObjectPointerList<KVIniSection>();
    sections->Add(section);
}

KVIniSection* KVIniFile::FindSection(const char* name, bool create) {
    StringBuffer wanted(name ? name : "");
    if (sections) {
        for (int i = 0; i < sections->GetCount(); ++i) {
            KVIniSection* section = sections->GetAt(i);
            if (section->GetName() == wanted)
                return section;
        }
    }
    if (!create)
        return nullptr;
    KVIniSection* section = new KVIniSection(wanted.str());
    AddSection(section);
    return section;
}

void KVIniFile::DeleteSection(const char* name) {
    KVIniSection* section = FindSection(name, false);
    if (section) {
        sections->Remove(section);
        delete section;
    }
}

KVIniKey* KVIniFile::FindKey(const char* section, const char* key, bool create) {
    KVIniSection* found = FindSection(section, create);
    return found ? found->FindKey(key, create) : nullptr;
}

StringBuffer KVIniFile::GetString(const char* section, const char* key, const char* def) {
    KVIniKey* found = FindKey(section, key, false);
    return found ? found->GetValue() : StringBuffer(def ? def : "");
}

int KVIniFile::GetInt(const char* section, const char* key, int def) {
    KVIniKey* found = FindKey(section, key, false);
    return found ? found->GetValueInt() : def;
}

bool KVIniFile::GetBool(const char* section, const char* key, bool def) {
    KVIniKey* found = FindKey(section, key, false);
    return found ? found->GetValueBool() : def;
}

void KVIniFile::SetString(const char* section, const char* key, const char* value) {
    FindKey(section, key, true)->SetValue(value);
}

void KVIniFile::SetInt(const char* section, const char* key, int value) {
    FindKey(section, key, true)->SetValue(value);
}

void KVIniFile::SetBool(const char* section, const char* key, bool value) {
    FindKey(section, key, true)->SetValue(value);
}
