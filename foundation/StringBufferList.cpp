#include "StringBufferList.h"

#include "FileTruncate.h"
#include "StringBufferException.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

StringBufferException SystemFailure(const char* prefix, int error) {
    return StringBufferException(StringBuffer(prefix) + StringBuffer(std::strerror(error)));
}

bool IsSeparator(char c, const char* separators) {
    for (; *separators != '\0'; ++separators)
        if (*separators == c)
            return true;
    return false;
}

// Writes all of data, resuming after partial writes; false (errno set) on failure.
bool WriteAll(int fd, const char* data, size_t size) {
    while (size > 0) {
        const ssize_t written = ::write(fd, data, size);
        if (written < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        if (written == 0) {
            errno = ENOSPC;
            return false;
        }
        data += written;
        size -= static_cast<size_t>(written);
    }
    return true;
}

// Reads up to size bytes; returns how many arrived before the end or an error.
size_t ReadAll(int fd, char* data, size_t size) {
    size_t total = 0;
    while (total < size) {
        const ssize_t got = ::read(fd, data + total, size - total);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            break;
        total += static_cast<size_t>(got);
    }
    return total;
}

} // namespace

StringBufferList::StringBufferList() : entries(new KVObjectPointerList<StringBufferListObj>()) {}

StringBufferList::~StringBufferList() {
    Clear();
    delete entries;
}

int StringBufferList::GetCount() const {
    return entries->GetCount();
}

void StringBufferList::Add(const StringBuffer& line) {
    entries->Add(new StringBufferListObj(line));
}

StringBuffer StringBufferList::GetItem(int index) const {
    const StringBufferListObj* entry = entries->GetAt(index);
    if (!entry)
        throw StringBufferException(StringBuffer("Item at index ") + StringBuffer(index) +
                                    StringBuffer(" does not exist"));
    return entry->text;
}

int StringBufferList::Split(const StringBuffer& text, const StringBuffer& separators) {
    if (text.isEmpty() || separators.isEmpty())
        return 0;
    const char* at = text.str(); // the text ends at its first NUL here
    const char* set = separators.str();
    int added = 0;
    while (*at != '\0') {
        while (*at != '\0' && IsSeparator(*at, set))
            ++at;
        const char* start = at;
        while (*at != '\0' && !IsSeparator(*at, set))
            ++at;
        if (at > start) {
            Add(StringBuffer(start, static_cast<int32_t>(at - start)));
            ++added;
        }
    }
    return added;
}

void StringBufferList::LoadFromFile(const StringBuffer& file) {
    const int fd = ::open(file.str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        throw SystemFailure("Unable to open file - ", errno);
    struct stat info {};
    int error = 0;
    if (::fstat(fd, &info) != 0)
        error = errno;
    else if (S_ISDIR(info.st_mode))
        error = EISDIR; // a folder opens on this platform but is not a file to read
    if (error != 0) {
        ::close(fd);
        throw SystemFailure("Unable to open file - ", error);
    }
    const off_t end = ::lseek(fd, 0, SEEK_END);
    ::lseek(fd, 0, SEEK_SET);
    // Lengths are 32-bit; larger files are outside what a line list holds.
    if (end >= static_cast<off_t>(INT32_MAX)) {
        ::close(fd);
        throw SystemFailure("Unable to open file - ", EFBIG);
    }
    const size_t size = end > 0 ? static_cast<size_t>(end) : 0;
    char* bytes = new char[size + 1]();
    const size_t read = ReadAll(fd, bytes, size);
    ::close(fd);
    StringBuffer text;
    if (read > 0)
        text = StringBuffer(bytes, static_cast<int32_t>(read));
    delete[] bytes;
    Split(text, StringBuffer("\r\n"));
}

bool StringBufferList::SaveToFile(const StringBuffer& file, bool append, bool throwOnError) {
    const int fd = ::open(file.str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
    if (fd < 0) {
        if (throwOnError)
            throw SystemFailure("Unable to create file - ", errno);
        return false;
    }
    bool ok = true;
    if (append) {
        ok = ::lseek(fd, 0, SEEK_END) >= 0;
    } else {
        ok = TruncateIfRegular(fd);
    }
    for (int i = 0; ok && i < entries->GetCount(); ++i) {
        const StringBuffer& line = entries->GetAt(i)->text;
        ok = WriteAll(fd, line.str(), static_cast<size_t>(line.size())) && WriteAll(fd, "\r\n", 2);
    }
    const int error = errno;
    ::close(fd);
    if (ok)
        return true;
    if (throwOnError)
        throw SystemFailure("Error saving file - ", error);
    return false;
}

void StringBufferList::Clear() {
    for (int i = 0; i < entries->GetCount(); ++i)
        delete entries->GetAt(i);
    entries->Clear();
}
