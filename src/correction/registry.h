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
class Registry {
public:
    // Both throw KELThreadException; adopt() also std::bad_alloc, and then the object is freed.
    ColorCorrection* adopt(std::unique_ptr<ColorCorrection> object);
    void remove(const FunctorBase* object); // any address, also of no object

    std::size_t size();

private:
    thread::Mutex mutex_;
    std::set<const FunctorBase*> objects_;
};

Registry& registry(); // set up when the library is loaded

} // namespace kel
