#include "correction/registry.h"

namespace kel {

namespace {

Registry instance;

} // namespace

Registry& registry() { return instance; }

ColorCorrection* Registry::adopt(std::unique_ptr<ColorCorrection> object) {
    const thread::Guard guard(mutex_);
    objects_.insert(object.get());
    return object.release(); // also if the unlock fails now: the set has the address
}

void Registry::remove(const FunctorBase* object) {
    const thread::Guard guard(mutex_);
    objects_.erase(object);
}

std::size_t Registry::size() {
    const thread::Guard guard(mutex_);
    return objects_.size();
}

} // namespace kel
