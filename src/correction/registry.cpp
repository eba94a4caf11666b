#include "correction/registry.h"

#include <new>

namespace kel {

namespace {

struct AtLoad {
    AtLoad() { registry(); }
    ~AtLoad() { registry().clear(); }
} atLoad;

} // namespace

Registry& registry() {
    alignas(Registry) static std::byte memory[sizeof(Registry)];
    static Registry& instance = *new (memory) Registry;
    return instance;
}

ColorCorrection* Registry::adopt(std::unique_ptr<ColorCorrection> object) {
    Objects one{object.get()};
    Objects::node_type node = one.extract(one.begin());
    const thread::Guard guard(mutex_);
    objects_.insert(std::move(node));
    return object.release(); // also if the unlock fails now: the set has the address
}

void Registry::remove(const FunctorBase* object) {
    Objects::node_type node; // outlives the lock
    const thread::Guard guard(mutex_);
    node = objects_.extract(object);
}

void Registry::clear() noexcept {
    Objects forgotten;
    if (!mutex_.tryLock()) return;
    objects_.swap(forgotten);
    mutex_.tryUnlock();
}

std::size_t Registry::size() {
    const thread::Guard guard(mutex_);
    return objects_.size();
}

} // namespace kel
