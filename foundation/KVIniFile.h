#pragma once

#include "KVIniSection.h"
#include "KVObjectPointerList.h"
#include "StringBuffer.h"

// A settings file of "[section]" blocks and "key=value" lines held in memory, with typed access.
// Lines are split at any run of CR/LF bytes on load and end with CR LF on save. Lines starting
// with "#" or "//" are comments; key lines before the first section are dropped; duplicate
// sections and keys are kept in order (lookups find the first, Save writes all).
class KVIniFile {
public:
    KVIniFile();
    KVIniFile(const KVIniFile&) = delete;
    KVIniFile& operator=(const KVIniFile&) = delete;

    // Deletes every section (each deletes its keys), then the list.
    virtual ~KVIniFile();
    // The name last given to a successful Load or to Save; "" at first.
    virtual StringBuffer GetFileName() const;
    // When on, each saved line has shift added to every byte (mod 256) and each loaded line has
    // it subtracted. Off forces the shift to 0.
    virtual void SetByteShift(bool on, int shift);
    // Replaces every section with the file's contents. An empty name or a missing file throws
    // KVBaseException when throwOnError is set and returns false otherwise, leaving memory and the
    // remembered name untouched. A file that exists but cannot be read throws
    // StringBufferException in both modes.
    virtual bool Load(const char* file, bool throwOnError);
    // Writes every section and key. An empty name throws KVBaseException or returns false.
    // Before anything was loaded or set, nothing is written and the result is true. Write errors
    // throw StringBufferException when throwOnError is set; otherwise they are ignored and the
    // result is still true.
    virtual bool Save(const char* file, bool throwOnError);
    // Parses the remembered file again. True when no name is remembered or the file was read;
    // false when the file no longer exists.
    virtual bool Reload();
    // Deletes every section; the (possibly absent) section list itself stays.
    virtual void Clear();
    // Appends the section, creating the list when absent; the file takes ownership.
    virtual void AddSection(KVIniSection* section);
    // First section whose name matches exactly (case-sensitive, untrimmed). When none does: with
    // create, a new empty section is appended and returned; without, null.
    virtual KVIniSection* FindSection(const char* name, bool create);
    // Removes and deletes the first section of that name; nothing when there is none.
    virtual void DeleteSection(const char* name);
    // The key in the first section of that name; null when either is missing and create is false.
    virtual KVIniKey* FindKey(const char* section, const char* key, bool create);

    // Getters never create anything: a missing section or key gives def.
    virtual StringBuffer GetString(const char* section, const char* key, const char* def);
    virtual int GetInt(const char* section, const char* key, int def);
    virtual bool GetBool(const char* section, const char* key, bool def);
    // Setters create the section and the key when missing; nothing is written until Save.
    virtual void SetString(const char* section, const char* key, const char* value);
    virtual void SetInt(const char* section, const char* key, int value);
    virtual void SetBool(const char* section, const char* key, bool value);

    // Sections in file order; null until a section was added or a file loaded.
    KVObjectPointerList<KVIniSection>* GetSections() const { return sections; }

private:
    void Parse();
    void ShiftLine(StringBuffer& line, int amount) const;

    StringBuffer fileName;
    bool shiftOn = false;
    int shift = 0;
    KVObjectPointerList<KVIniSection>* sections = nullptr; // owned
};
