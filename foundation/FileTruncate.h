#pragma once

// Empties a file just opened for writing and puts it at its start. Only a regular file has a
// length to cut: a device or a pipe (/dev/null, a terminal) is written as it is. False when the
// file cannot be examined or cut.
bool TruncateIfRegular(int fd);
