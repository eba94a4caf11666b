// Colour-correction objects and the set of those that are alive.
#pragma once
#include <cstddef>
#include <memory>
#include <set>

#include "correction/matrix.h"
#include "support/mutex.h"

namespace kel {

// How every object behind a handle begins.
struct FunctorBase {
    u32 kind;
};

// For converters with outputs of 8 bits and of 16 bits a channel.
constexpr u32 kindInt8 = 2, kindInt16 = 3;

struct ColorCorrection : FunctorBase {
    Matrix matrix;
};
static_assert(sizeof(ColorCorrection) == 40);

// The addresses of the live objects. The objects themselves stay in memory until the process ends: a conversion that
// runs in another thread may still read one.
//
// Memory is neither taken nor given back while the lock is held, so an application's own operator new and delete may
// call the library.
class Registry {
public:
    // Both throw KELThreadException; adopt() also std::bad_alloc, and then the object is freed.
    ColorCorrection* adopt(std::unique_ptr<ColorCorrection> object);
    void remove(const FunctorBase* object); // any address, also of no object

    // Forgets all objects; does nothing if another thread holds the lock, which it may never give back (after a fork).
    void clear() noexcept;

    std::size_t size();

private:
    using Objects = std::set<const FunctorBase*>;

    thread::Mutex mutex_;
    Objects objects_;
};

// Set up when the library is loaded, emptied when it is unloaded or the process exits, and never destroyed: threads may
// outlive main().
Registry& registry();

} // namespace kel
