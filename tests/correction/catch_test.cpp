// An application catches the exception that leaves the library. It brings a pthread_mutex_lock of its own, which the
// dynamic linker gives to the library as well.
#include <pthread.h>

#include <cerrno>
#include <cstdio>

#include "orvella/exceptions.hpp"
#include "orvella/orv.h"

extern "C" ORV_API int pthread_mutex_lock(pthread_mutex_t*) noexcept { return EAGAIN; }

int main() {
    const float identity[] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    ColorCorrectionHandle handle = nullptr;
    try {
        const OrvErrorType result = OrvCreateColorCorrectionMatrix_Int8(identity, &handle);
        std::printf("returned %d\n", static_cast<int>(result));
        return 1;
    } catch (const kel::thread::KELThreadException& exception) {
        std::printf("caught, code %d\n", static_cast<int>(exception.code()));
        return exception.code() == 0 && !handle ? 0 : 1;
    }
}
