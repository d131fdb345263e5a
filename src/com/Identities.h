#pragma once

#include "adapters/ado/automation/ComPtr.h"

#include <mutex>
#include <unordered_map>
#include <utility>

namespace z7::com {

/// Under which object hosts know something of the library, so that a host that is given it twice holds one object. It
/// keeps nothing alive: an object is known from its creation to its destruction.
///
/// T derives from Object and has the model as a member; it calls forget() in its destructor.
template <class T> class Identities {
public:
    /// The object of a model, with a reference for the caller; make() creates it if there is none. The object has to
    /// keep the model alive.
    template <class Make> [[nodiscard]] static adapters::automation::ComPtr<T> of(const void* model, Make&& make) {
        const std::lock_guard lock(mutex());
        T*& place = known()[model]; // before there is an object, whose destructor would need the lock
        if (place != nullptr && place->addRefIfAlive()) {
            return adapters::automation::ComPtr<T>::owning(place);
        }
        adapters::automation::ComPtr<T> object(make());
        place = object.get();
        return object;
    }

    /// Removes an object that is being destroyed.
    static void forget(const void* model, const T* object) noexcept {
        const std::lock_guard lock(mutex());
        const auto found = known().find(model);
        if (found != known().end() && found->second == object) {
            known().erase(found);
        }
    }

private:
    static std::mutex& mutex() {
        static std::mutex value;
        return value;
    }
    static std::unordered_map<const void*, T*>& known() {
        static std::unordered_map<const void*, T*> value;
        return value;
    }
};

} // namespace z7::com
