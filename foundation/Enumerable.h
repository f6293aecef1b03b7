#pragma once

namespace KV {

// A forward cursor over a sequence: Reset(), then read Current() while HasCurrent(), calling
// MoveNext() to step.
template <typename T> class Enumerable {
public:
    virtual ~Enumerable() = default;
    virtual void Reset() = 0;
    // Steps forward; true while there is a current item afterwards.
    virtual bool MoveNext() = 0;
    virtual bool HasCurrent() const = 0;
    virtual T Current() const = 0;
};

} // namespace KV
