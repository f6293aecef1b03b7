#pragma once

namespace KV {

// Common root of the KV lists, so any of them can be destroyed through one base.
class VirtualBaseList {
public:
    VirtualBaseList() = default;
    VirtualBaseList(const VirtualBaseList&) = delete;
    VirtualBaseList& operator=(const VirtualBaseList&) = delete;
    virtual ~VirtualBaseList() = default;
};

} // namespace KV
