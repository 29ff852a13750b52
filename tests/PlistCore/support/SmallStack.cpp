#include "tests/PlistCore/support/SmallStack.h"

#include <pthread.h>

#include <cstddef>
#include <stdexcept>

namespace {

void* runWork(void* work) {
    (*static_cast<const std::function<void()>*>(work))();
    return nullptr;
}

}  // namespace

void runOnSmallStack(const std::function<void()>& work) {
    constexpr std::size_t stackSize = std::size_t{8} << 20;
    pthread_attr_t attributes;
    pthread_t thread = {};
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, stackSize);
    const int problem =
        pthread_create(&thread, &attributes, runWork, const_cast<std::function<void()>*>(&work));
    pthread_attr_destroy(&attributes);
    if (problem != 0) {
        throw std::runtime_error("no thread could be started");
    }
    pthread_join(thread, nullptr);
}
