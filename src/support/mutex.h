// The library's mutex and its guard.
#pragma once
#include <pthread.h>

namespace kel::thread {

// A recursive pthread mutex: the thread that holds it may take it again, and releases it as often.
class Mutex {
public:
    Mutex(); // throws pthread_exception, KELThreadException
    ~Mutex();
    Mutex(const Mutex&) = delete;
    Mutex& operator=(const Mutex&) = delete;

    void lock();   // throws KELThreadException
    void unlock(); // throws KELThreadException

    // False if another thread holds the mutex, or if the call fails.
    bool tryLock() noexcept { return pthread_mutex_trylock(&mutex_) == 0; }
    bool tryUnlock() noexcept { return pthread_mutex_unlock(&mutex_) == 0; }

private:
    pthread_mutex_t mutex_;
};

// Holds a mutex during its own life. A failing unlock throws, too, except while another exception is on its way.
class Guard {
public:
    explicit Guard(Mutex& mutex);
    ~Guard() noexcept(false);
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

private:
    Mutex& mutex_;
    int exceptions_; // on their way when the guard was made
};

} // namespace kel::thread
