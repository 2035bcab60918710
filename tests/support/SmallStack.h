#pragma once
// Runs something on a thread with a stack of its own size, where a system lets a thread have that.

#include <cstddef>
#include <functional>

#ifdef __linux__
#include <pthread.h>
#endif

namespace zorvane {

inline bool RunOnStackOf([[maybe_unused]] std::size_t bytes,
                         [[maybe_unused]] std::function<void()> body) {
#ifdef __linux__
    pthread_attr_t size;
    pthread_attr_init(&size);
    // A system may have a least size that is greater: the body would run on any stack.
    if (pthread_attr_setstacksize(&size, bytes) != 0) return false;
    pthread_t thread;
    const auto run = [](void* given) -> void* {
        (*static_cast<std::function<void()>*>(given))();
        return nullptr;
    };
    const bool runs = pthread_create(&thread, &size, run, &body) == 0;
    pthread_attr_destroy(&size);
    return runs && pthread_join(thread, nullptr) == 0;
#else
    return false;
#endif
}

}  // namespace zorvane
