// A JSON document read back into values: enough to load runs that glyphor-batch wrote (and that
// people edited). Objects keep their member order; each value remembers where its text lies in the
// source, so rows can be copied unchanged into a merged run.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class JsonValue {
public:
    enum class Type { Null, Bool, Number, String, Array, Object };

    Type type = Type::Null;
    bool boolean = false;
    double number = 0;
    std::string string;
    std::vector<JsonValue> items;                           // Array
    std::vector<std::pair<std::string, JsonValue>> members; // Object, in source order
    size_t begin = 0, end = 0;                              // the value's text in the source

    // The member's value, or null when this is not an object or has no such member.
    const JsonValue* Find(const std::string& name) const;
    bool IsNumber() const { return type == Type::Number; }
    bool IsString() const { return type == Type::String; }

    // Parses a whole document. On failure returns false with error "line L: reason".
    static bool Parse(const std::string& text, JsonValue& value, std::string& error);

    static constexpr int kMaxDepth = 64;
};
