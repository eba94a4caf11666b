// Failing locks and allocations. The linker sends this program's calls of the pthread functions, of malloc, of operator new
// (_Znwm) and of the operator new[] that does not throw (_ZnamRKSt9nothrow_t) to the __wrap_ functions below.
#include <gtest/gtest.h>

#include <pthread.h>

#include <cerrno>
#include <cstdint>
#include <new>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <vector>

#include "catalogue/conversions.h"
#include "correction/registry.h"
#include "orvella/exceptions.hpp"
#include "orvella/zeb.h"
#include "support/fill.h"
#include "support/levels.h"
#include "support/mutex.h"

namespace {

enum class Operation { none, attributeInit, attributeSetType, mutexInit, lock, unlock };

// Nothing fails until a test says so, and then one call does.
Operation failing = Operation::none;
int locked = 0, attributes = 0; // locks held, attribute objects alive
int allocationsLeft = -1;       // until one fails; -1: none fails
bool memoryIsOut = false;       // all the time
int asked = 0;                  // for memory
void** record = nullptr;        // where the next allocation's address goes

bool fails(Operation operation) {
    if (failing != operation) return false;
    failing = Operation::none;
    return true;
}

} // namespace

extern "C" {
int __real_pthread_mutexattr_init(pthread_mutexattr_t*);
int __real_pthread_mutexattr_settype(pthread_mutexattr_t*, int);
int __real_pthread_mutexattr_destroy(pthread_mutexattr_t*);
int __real_pthread_mutex_init(pthread_mutex_t*, const pthread_mutexattr_t*);
int __real_pthread_mutex_lock(pthread_mutex_t*);
int __real_pthread_mutex_unlock(pthread_mutex_t*);
void* __real__Znwm(std::size_t);
void* __real_malloc(std::size_t);
void* __real__ZnamRKSt9nothrow_t(std::size_t, const std::nothrow_t&);

int __wrap_pthread_mutexattr_init(pthread_mutexattr_t* attribute);
int __wrap_pthread_mutexattr_settype(pthread_mutexattr_t* attribute, int type);
int __wrap_pthread_mutexattr_destroy(pthread_mutexattr_t* attribute);
int __wrap_pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t* attribute);
int __wrap_pthread_mutex_lock(pthread_mutex_t* mutex);
int __wrap_pthread_mutex_unlock(pthread_mutex_t* mutex);
void* __wrap__Znwm(std::size_t size);
void* __wrap_malloc(std::size_t size);
void* __wrap__ZnamRKSt9nothrow_t(std::size_t size, const std::nothrow_t& tag);

void* __wrap_malloc(std::size_t size) {
    ++asked;
    return memoryIsOut ? nullptr : __real_malloc(size);
}
void* __wrap__ZnamRKSt9nothrow_t(std::size_t size, const std::nothrow_t& tag) {
    ++asked;
    return memoryIsOut ? nullptr : __real__ZnamRKSt9nothrow_t(size, tag);
}
int __wrap_pthread_mutexattr_init(pthread_mutexattr_t* attribute) {
    if (fails(Operation::attributeInit)) return ENOMEM;
    ++attributes;
    return __real_pthread_mutexattr_init(attribute);
}
int __wrap_pthread_mutexattr_settype(pthread_mutexattr_t* attribute, int type) {
    return fails(Operation::attributeSetType) ? EINVAL : __real_pthread_mutexattr_settype(attribute, type);
}
int __wrap_pthread_mutexattr_destroy(pthread_mutexattr_t* attribute) {
    --attributes;
    return __real_pthread_mutexattr_destroy(attribute);
}
int __wrap_pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t* attribute) {
    return fails(Operation::mutexInit) ? EAGAIN : __real_pthread_mutex_init(mutex, attribute);
}
int __wrap_pthread_mutex_lock(pthread_mutex_t* mutex) {
    if (fails(Operation::lock)) return EAGAIN;
    ++locked;
    return __real_pthread_mutex_lock(mutex);
}
// The mutex is released all the same, so that the tests can go on.
int __wrap_pthread_mutex_unlock(pthread_mutex_t* mutex) {
    --locked;
    const int result = __real_pthread_mutex_unlock(mutex);
    return fails(Operation::unlock) ? EPERM : result;
}
void* __wrap__Znwm(std::size_t size) {
    ++asked;
    if (allocationsLeft == 0 || memoryIsOut) throw std::bad_alloc();
    if (allocationsLeft > 0) --allocationsLeft;
    void* memory = __real__Znwm(size);
    if (record) *std::exchange(record, nullptr) = memory;
    return memory;
}
}

namespace {

std::vector<std::uint8_t> buffers = [] {
    std::vector<std::uint8_t> bytes(8192);
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::uint8_t>(i * i >> 5);
    return bytes;
}();

using kel::thread::KELThreadException;
using kel::thread::pthread_exception;

// ---- Start-up

void expectAttributeFailure(Operation operation, const char* message, const char* name, int code) {
    failing = operation;
    try {
        const kel::thread::Mutex mutex;
        ADD_FAILURE() << "no exception";
    } catch (const pthread_exception& exception) {
        EXPECT_EQ(exception.message(), message);
        EXPECT_EQ(exception.operation(), name);
        EXPECT_EQ(exception.code(), code);
    }
    EXPECT_EQ(attributes, 0);
}

TEST(MutexFailures, OfItsAttributes) {
    expectAttributeFailure(Operation::attributeInit, "init mutex attribut failed", "init", ENOMEM);
    expectAttributeFailure(Operation::attributeSetType, "unable to set mutex attribut", "set", EINVAL);
}

TEST(MutexFailures, OfItsInitialisation) {
    failing = Operation::mutexInit;
    try {
        const kel::thread::Mutex mutex;
        ADD_FAILURE() << "no exception";
    } catch (const KELThreadException& exception) {
        EXPECT_EQ(exception.code(), 0);
    }
    EXPECT_EQ(attributes, 0);
}

// ---- The guard

TEST(Guard, MayBeNested) {
    kel::thread::Mutex mutex;
    {
        const kel::thread::Guard outer(mutex), inner(mutex);
        EXPECT_EQ(locked, 2);
    }
    EXPECT_EQ(locked, 0);
    EXPECT_EQ(attributes, 0); // not needed any more
}

TEST(Guard, ThrowsWhenItCannotLockOrUnlock) {
    kel::thread::Mutex mutex;
    for (const Operation operation : {Operation::lock, Operation::unlock}) {
        failing = operation;
        EXPECT_THROW(kel::thread::Guard{mutex}, KELThreadException);
        EXPECT_EQ(locked, 0);
    }
}

TEST(Guard, DoesNotThrowWhileAnotherExceptionIsOnItsWay) {
    kel::thread::Mutex mutex;
    const auto throwUnderGuard = [&mutex] {
        const kel::thread::Guard guard(mutex);
        failing = Operation::unlock;
        throw std::runtime_error("another");
    };
    EXPECT_THROW(throwUnderGuard(), std::runtime_error);
    EXPECT_EQ(failing, Operation::none);
}

// A guard that is made and left while an exception is on its way reports as ever.
TEST(Guard, ThrowsInsideACleanup) {
    struct Cleanup {
        kel::thread::Mutex& mutex;
        bool& thrown;
        ~Cleanup() {
            failing = Operation::unlock;
            try {
                const kel::thread::Guard guard(mutex);
            } catch (const KELThreadException&) {
                thrown = true;
            }
        }
    };
    kel::thread::Mutex mutex;
    bool thrown = false;
    const auto throwOverCleanup = [&] {
        const Cleanup cleanup{mutex, thrown};
        throw std::runtime_error("another");
    };
    EXPECT_THROW(throwOverCleanup(), std::runtime_error);
    EXPECT_TRUE(thrown);
}

// ---- Colour-correction objects

constexpr float identity[] = {1, 0, 0, 0, 1, 0, 0, 0, 1};

class ObjectFailures : public ::testing::TestWithParam<OrvErrorType (*)(const float*, ColorCorrectionHandle*)> {
protected:
    OrvErrorType create() { return GetParam()(identity, &handle_); }
    void TearDown() override {
        EXPECT_EQ(handle_, &target_); // left alone
        EXPECT_EQ(locked, 0);
    }

    int target_ = 0;
    ColorCorrectionHandle handle_ = &target_;
    const std::size_t before_ = kel::registry().size();
};

TEST_P(ObjectFailures, NoMemory) {
    for (const int allocations : {0, 1}) { // for the object, for its entry in the set
        allocationsLeft = allocations;
        const OrvErrorType result = create();
        allocationsLeft = -1;
        EXPECT_EQ(result, OrvErrorResources);
        EXPECT_EQ(kel::registry().size(), before_);
    }
}

TEST_P(ObjectFailures, NoMemoryIsNoticedBeforeTheLockIsTaken) {
    allocationsLeft = 1;
    failing = Operation::lock;
    const OrvErrorType result = create();
    allocationsLeft = -1;
    EXPECT_EQ(result, OrvErrorResources);
    EXPECT_EQ(std::exchange(failing, Operation::none), Operation::lock);
}

TEST_P(ObjectFailures, NoLock) {
    failing = Operation::lock;
    EXPECT_THROW(create(), KELThreadException);
    EXPECT_EQ(kel::registry().size(), before_);
}

TEST_P(ObjectFailures, NoUnlock) {
    static void* objects[2]; // stay in memory
    static int object = 0;
    record = &objects[object++];
    failing = Operation::unlock;
    EXPECT_THROW(create(), KELThreadException);
    EXPECT_EQ(kel::registry().size(), before_ + 1); // by then it had been entered
}

INSTANTIATE_TEST_SUITE_P(Creators, ObjectFailures,
                         ::testing::Values(OrvCreateColorCorrectionMatrix_Int8, OrvCreateColorCorrectionMatrix_Int16));

TEST(ObjectFailures, AreNotReportedByDestroy) {
    ColorCorrectionHandle handle = nullptr;
    ASSERT_EQ(OrvCreateColorCorrectionMatrix_Int8(identity, &handle), OrvErrorSuccess);
    const std::size_t before = kel::registry().size();
    for (const Operation operation : {Operation::lock, Operation::unlock}) {
        failing = operation;
        EXPECT_EQ(OrvDestroyColorCorrection(handle), OrvErrorBadParameter);
        EXPECT_EQ(failing, Operation::none);
    }
    EXPECT_EQ(kel::registry().size(), before - 1);
    failing = Operation::lock;
    EXPECT_EQ(OrvDestroyColorCorrection(nullptr), OrvErrorBadParameter); // takes no lock
    EXPECT_EQ(failing, Operation::lock);
    failing = Operation::none;
    ::operator delete(handle);
}

// ---- Conversions that need memory

// A call with memory, which writes, and then without: what it answers, and whether it leaves both buffers alone.
template <class Answer, class... Args>
void expectWithoutMemory(Answer expected, Answer (*function)(void*, Args...), void* destination,
                         std::type_identity_t<Args>... arguments) {
    const std::vector<std::uint8_t> before = buffers;
    EXPECT_EQ(function(destination, arguments...), Answer{0});
    EXPECT_NE(buffers, before);
    buffers = before;
    memoryIsOut = true;
    const Answer answer = function(destination, arguments...);
    memoryIsOut = false;
    EXPECT_EQ(answer, expected);
    EXPECT_EQ(buffers, before);
}

// The filtered demosaics succeed silently.
TEST(WithoutMemory, FilteredMosaicsWriteNothing) {
    void* const from = buffers.data() + 4096;
    for (const auto family :
         {OrvRaw8ImageTransform_IntLCAA, OrvRaw8ImageTransform_IntLCAAV, OrvRaw8ImageTransform_IntYUV422})
        expectWithoutMemory(OrvErrorType{OrvErrorSuccess}, family, buffers.data(), from, 16, 8, 1, 0);
    for (const auto family :
         {ZEB_Raw8ImageTransform_IntLCAA, ZEB_Raw8ImageTransform_IntLCAAV, ZEB_Raw8ImageTransform_IntYUV422})
        expectWithoutMemory(0U, family, buffers.data(), from, 16, 8, 1, 0);
    for (const auto converter : {OrvRaw8ToBGR_IntLCAA, OrvRaw8ToBGR_IntLCAAV, OrvRaw8ToBGR_IntYUV422})
        expectWithoutMemory(OrvErrorType{OrvErrorSuccess}, converter, buffers.data(), from, 16, 8, 0);
}

// All others neither ask for memory nor take a lock: what they write is the same without either.
TEST(WithoutMemory, ConversionsAreMadeAtEveryLevel) {
    support::Random random(support::seed());
    support::atEveryLevel([&random] {
        for (const catalogue::Conversion& conversion : catalogue::conversions()) {
            constexpr std::uint32_t width = 132, height = 8;
            support::Bytes source = support::filled(conversion.sourceSize(width, height) + conversion.beyond,
                                                    support::Contents::noise, random);
            support::Bytes expected(conversion.destinationSize(width, height)), made = expected;
            if (conversion.onlyInPlace) expected = made = source;
            support::Bytes scratch = source;
            const auto convert = [&](support::Bytes& to) {
                std::uint8_t* from = conversion.onlyInPlace ? to.data() : scratch.data();
                return conversion.convert(to.data(), from, width, height, 0);
            };
            EXPECT_EQ(convert(expected), OrvErrorSuccess); // the first call makes objects for the catalogue
            if (conversion.overwritesSource) expected = made, scratch = source;
            memoryIsOut = true, failing = Operation::lock, asked = 0;
            const OrvErrorType answer = convert(made);
            memoryIsOut = false;
            EXPECT_EQ(answer, OrvErrorSuccess);
            EXPECT_EQ(std::exchange(failing, Operation::none), Operation::lock) << conversion.name();
            EXPECT_EQ(asked, conversion.overwritesSource ? 1 : 0) << conversion.name();
            EXPECT_TRUE(made == expected && scratch == source) << conversion.name();
        }
    });
}

TEST(WithoutMemory, FieldsAreNotWovenInPlace) {
    expectWithoutMemory(OrvErrorType{OrvErrorResources}, OrvInterlacedToProgressive, buffers.data(), buffers.data(), 4,
                        4);
    expectWithoutMemory(0x8800001AU, ZEB_InterlacedToProgressive, buffers.data(), buffers.data(), 4, 4);
}

} // namespace
