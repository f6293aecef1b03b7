// Work that ZyrReader_DestroyCachedData must do for an area beyond freeing objects (the plug-in
// host closes its plug-ins here). Hooks stay registered for the life of the process and run on
// every ZyrReader_DestroyCachedData, so each must be harmless when there is nothing to do.
#ifndef ZYR_CORE_SHUTDOWN_HOOKS_H
#define ZYR_CORE_SHUTDOWN_HOOKS_H

#include <functional>
#include <mutex>
#include <vector>

namespace zyr {

class ShutdownHooks {
public:
    static ShutdownHooks& instance();

    void add(std::function<void()> hook);

    // Runs the hooks, the last added first (later areas may depend on earlier ones).
    void runAll();

private:
    std::mutex mutex_;
    std::vector<std::function<void()>> hooks_;
};

// Registers a hook from a static initialiser: `static zyr::ShutdownHookRegistration r{[] {...}};`
struct ShutdownHookRegistration {
    explicit ShutdownHookRegistration(std::function<void()> hook) {
        ShutdownHooks::instance().add(std::move(hook));
    }
};

} // namespace zyr

#endif
