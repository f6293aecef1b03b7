#include "core/ObjectRegistry.h"

#include "ZyrReaderLowLevelAPI.h"

#include <utility>
#include <vector>

namespace zyr {

ObjectRegistry& ObjectRegistry::instance() {
    static ObjectRegistry registry;
    return registry;
}

ObjectRegistry::~ObjectRegistry() {
    destroyAll();
}

bool ObjectRegistry::add(const void* object, std::function<void()> deleter) {
    if (object == nullptr || !deleter)
        return false;
    std::lock_guard<std::mutex> lock(mutex_);
    return objects_.emplace(object, std::move(deleter)).second;
}

int32_t ObjectRegistry::destroy(const void* object) {
    if (object == nullptr)
        return ZYR_ERR_BAD_ARGUMENT;
    std::function<void()> deleter;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        auto it = objects_.find(object);
        if (it == objects_.end())
            return ZYR_ERR_UNKNOWN_HANDLE;
        deleter = std::move(it->second);
        objects_.erase(it);
    }
    // Outside the lock: a deleter may itself release registered objects.
    deleter();
    return ZYR_OK;
}

std::size_t ObjectRegistry::destroyAll() {
    std::unordered_map<const void*, std::function<void()>> taken;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        taken.swap(objects_);
    }
    for (auto& entry : taken)
        entry.second();
    return taken.size();
}

bool ObjectRegistry::contains(const void* object) const {
    std::lock_guard<std::mutex> lock(mutex_);
    return objects_.count(object) != 0;
}

std::size_t ObjectRegistry::size() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return objects_.size();
}

} // namespace zyr
