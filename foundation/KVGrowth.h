#pragma once

// Capacity after a full list grows, shared by every list of the library: +4 while the capacity
// is below 5, +8 from 5 to 8, +16 above, so from empty it runs 4, 8, 16, 32, 48, 64, ...
inline int KVNextCapacity(int capacity) {
    if (capacity < 5)
        return capacity + 4;
    if (capacity <= 8)
        return capacity + 8;
    return capacity + 16;
}
