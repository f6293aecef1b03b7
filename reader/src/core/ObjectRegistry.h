// Every object the library hands to a client (symbol results, images, AAMVA records) is
// registered here with its deleter, so that ZyrReader_DestroyCachedObject can tell a live object
// from an unknown or already freed pointer, and ZyrReader_DestroyCachedData can free the rest.
#ifndef ZYR_CORE_OBJECT_REGISTRY_H
#define ZYR_CORE_OBJECT_REGISTRY_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <unordered_map>

namespace zyr {

class ObjectRegistry {
public:
    static ObjectRegistry& instance();

    ObjectRegistry() = default;
    ObjectRegistry(const ObjectRegistry&) = delete;
    ObjectRegistry& operator=(const ObjectRegistry&) = delete;
    ~ObjectRegistry(); // frees what is still registered

    // Registers object under its address; deleter frees it. An address registered twice keeps
    // the first deleter (the second registration is a bug of the caller and is refused: false).
    bool add(const void* object, std::function<void()> deleter);

    // Hands ownership of a heap object to the registry and returns the raw pointer for the client.
    template <class T> T* adopt(std::unique_ptr<T> object) {
        T* raw = object.get();
        std::shared_ptr<T> holder(std::move(object));
        add(raw, [holder]() mutable { holder.reset(); });
        return raw;
    }

    // Frees one object: ZYR_OK, ZYR_ERR_BAD_ARGUMENT for null, ZYR_ERR_UNKNOWN_HANDLE otherwise.
    int32_t destroy(const void* object);

    // Frees every registered object; returns how many.
    std::size_t destroyAll();

    bool contains(const void* object) const;
    std::size_t size() const;

private:
    mutable std::mutex mutex_;
    std::unordered_map<const void*, std::function<void()>> objects_;
};

} // namespace zyr

#endif
