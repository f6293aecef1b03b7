#pragma once

#include "KVObjectPointerList.h"
#include "StringBuffer.h"

// An ordered list of StringBuffer lines: split from text, read from a file, written to a file
// with CR LF after every line. Failures throw StringBufferException.
class StringBufferList {
public:
    // One line; owned by the list.
    class StringBufferListObj {
    public:
        explicit StringBufferListObj(const StringBuffer& text) : text(text) {}
        StringBuffer text;
    };

    StringBufferList();
    StringBufferList(const StringBufferList&) = delete;
    StringBufferList& operator=(const StringBufferList&) = delete;
    // Deletes every line, then the pointer list.
    virtual ~StringBufferList();

    int GetCount() const;
    // Appends a copy of line.
    void Add(const StringBuffer& line);
    // A copy of the line at index; throws "Item at index <index> does not exist" when the pointer
    // list has no entry there.
    StringBuffer GetItem(int index) const;
    // Appends the pieces of text (up to its first NUL) between characters of separators. Runs of
    // separators count as one, so no empty piece is added. Returns how many were added; 0 when
    // either argument is empty.
    int Split(const StringBuffer& text, const StringBuffer& separators);
    // Appends the lines of a file read as bytes, split at every run of CR and LF (blank lines
    // vanish). Throws "Unable to open file - <system text>" when it cannot be opened.
    void LoadFromFile(const StringBuffer& file);
    // Writes every line's bytes followed by CR LF, replacing the file's contents or, with append,
    // after them. Open failures ("Unable to create file - ...") and write failures ("Error saving
    // file - ...") throw when throwOnError is set and return false otherwise.
    bool SaveToFile(const StringBuffer& file, bool append, bool throwOnError);
    // Deletes every line.
    void Clear();

private:
    KVObjectPointerList<StringBufferListObj>* entries;
};
