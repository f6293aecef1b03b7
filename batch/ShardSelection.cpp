#include "ShardSelection.h"

#include <cstdint>
#include <cstdlib>

namespace {

bool WholeNumber(const std::string& text, int& number) {
    if (text.empty() || text.size() > 9 || text.find_first_not_of("0123456789") != std::string::npos) {
        return false;
    }
    number = std::atoi(text.c_str());
    return true;
}

// FNV-1a: the same on every machine and compiler, unlike std::hash.
uint64_t Hash(const std::string& text) {
    uint64_t hash = 14695981039346656037ull;
    for (const char c : text) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211ull;
    }
    return hash;
}

} // namespace

bool ShardSelection::Parse(const std::string& text, ShardSelection& spec) {
    const size_t slash = text.find('/');
    int index = 0;
    int count = 0;
    if (slash == std::string::npos || !WholeNumber(text.substr(0, slash), index) ||
        !WholeNumber(text.substr(slash + 1), count) || index < 1 || count > kMaxCount || index > count) {
        return false;
    }
    spec.index = index;
    spec.count = count;
    return true;
}

bool ShardSelection::Owns(const std::string& relative) const {
    return !Active() || Hash(relative) % static_cast<uint64_t>(count) == static_cast<uint64_t>(index - 1);
}

std::vector<ImageInput> ShardSelection::Select(const std::vector<ImageInput>& inputs) const {
    std::vector<ImageInput> mine;
    for (const ImageInput& input : inputs) {
        if (Owns(input.outputName)) {
            mine.push_back(input);
        }
    }
    return mine;
}
