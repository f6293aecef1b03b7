#include "core/ShutdownHooks.h"

namespace zyr {

ShutdownHooks& ShutdownHooks::instance() {
    static ShutdownHooks hooks;
    return hooks;
}

void ShutdownHooks::add(std::function<void()> hook) {
    std::lock_guard<std::mutex> lock(mutex_);
    hooks_.push_back(std::move(hook));
}

void ShutdownHooks::runAll() {
    std::vector<std::function<void()>> copy;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        copy = hooks_;
    }
    for (auto it = copy.rbegin(); it != copy.rend(); ++it)
        (*it)();
}

} // namespace zyr
