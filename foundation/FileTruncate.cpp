#include "FileTruncate.h"

#include <sys/stat.h>
#include <unistd.h>

bool TruncateIfRegular(int fd) {
    struct stat info {};
    if (::fstat(fd, &info) != 0)
        return false;
    if (!S_ISREG(info.st_mode))
        return true;
    return ::lseek(fd, 0, SEEK_SET) == 0 && ::ftruncate(fd, 0) == 0;
}
