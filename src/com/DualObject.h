#pragma once

#include "com/Face.h"

namespace z7::com {

/// An object with its default interface. The class that derives from it defines the members of that interface, and may
/// have faces of other interfaces as members.
template <class Interface> class DualObject : public Object, public Face<Interface> {
public:
    using Object::AddRef;
    using Object::QueryInterface;
    using Object::Release;

protected:
    DualObject() : Face<Interface>(static_cast<Object&>(*this)) {}
    ~DualObject() override = default;
};

} // namespace z7::com
