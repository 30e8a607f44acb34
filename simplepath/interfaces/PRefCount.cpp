#include "simplepath/interfaces/PRefCount.h"

#include <mutex>

namespace {
std::mutex& refCountMutex() {
    static std::mutex mutex;
    return mutex;
}
} // namespace

void lockRefCount() {
    refCountMutex().lock();
}
void unlockRefCount() {
    refCountMutex().unlock();
}
