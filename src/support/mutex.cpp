#include "support/mutex.h"

#include "orvella/exceptions.hpp"

namespace kel::thread {

namespace {

class RecursiveAttribute {
public:
    RecursiveAttribute() {
        if (const int code = pthread_mutexattr_init(&attribute_))
            throw pthread_exception("init mutex attribut failed", "init", code);
        if (const int code = pthread_mutexattr_settype(&attribute_, PTHREAD_MUTEX_RECURSIVE)) {
            pthread_mutexattr_destroy(&attribute_);
            throw pthread_exception("unable to set mutex attribut", "set", code);
        }
    }
    ~RecursiveAttribute() { pthread_mutexattr_destroy(&attribute_); }
    RecursiveAttribute(const RecursiveAttribute&) = delete;
    RecursiveAttribute& operator=(const RecursiveAttribute&) = delete;

    const pthread_mutexattr_t* get() const { return &attribute_; }

private:
    pthread_mutexattr_t attribute_;
};

} // namespace

Mutex::Mutex() {
    const RecursiveAttribute recursive;
    if (pthread_mutex_init(&mutex_, recursive.get()) != 0) throw KELThreadException();
}

Mutex::~Mutex() { pthread_mutex_destroy(&mutex_); }

void Mutex::lock() {
    if (pthread_mutex_lock(&mutex_) != 0) throw KELThreadException();
}

void Mutex::unlock() {
    if (pthread_mutex_unlock(&mutex_) != 0) throw KELThreadException();
}

Guard::Guard(Mutex& mutex) : mutex_(mutex), exceptions_(std::uncaught_exceptions()) { mutex_.lock(); }

Guard::~Guard() noexcept(false) {
    try {
        mutex_.unlock();
    } catch (const KELThreadException&) {
        if (std::uncaught_exceptions() == exceptions_) throw;
    }
}

} // namespace kel::thread
