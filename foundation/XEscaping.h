#pragma once

#include "BaseString.h"

namespace KV {
namespace XLib {

// Replaces & > < " ' by &amp; &gt; &lt; &quot; &apos; (in that order). Nothing else is touched
// and no numeric references are made.
template <typename C> BaseString<C> EscapeText(const BaseString<C>& text);

// Decodes &amp; first, then &gt; &lt; &quot; &apos; over the result, so "&amp;lt;" becomes "<".
// Element text and attribute values given as escaped text pass through here.
template <typename C> BaseString<C> UnescapeText(const BaseString<C>& text);

} // namespace XLib
} // namespace KV
