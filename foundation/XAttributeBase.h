#pragma once

#include "XObjectBase.h"

namespace KV {
namespace XLib {

// A name="value" pair of an element. The value is held unescaped and escaped when written.
template <typename C> class XAttributeBase final : public XObjectBase<C> {
public:
    using String = BaseString<C>;

    explicit XAttributeBase(const String& name);
    // The value is taken as SetValue takes it (unescaped on the way in).
    XAttributeBase(const String& name, const String& value);

    int GetNodeType() const override;
    // Appends name="escaped value" with the options' quote character.
    void Write(String& out, const XWriteOptions& options) const override;
    String ToString() const override;
    virtual bool HasValue() const;
    virtual String GetValue() const;
    // Stores the value after unescaping the five XML entities (see XEscaping.h).
    virtual void SetValue(const String& value);

private:
    String value;
};

} // namespace XLib
} // namespace KV
