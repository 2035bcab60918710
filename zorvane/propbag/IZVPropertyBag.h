#pragma once
/// \class zorvane::IZVPropertyBag
/// What an object fulfils so that a ZVPropertyBag can store and restore it.
///
/// The bag never looks inside: it hands the object an empty bag to write its properties to, or a
/// filled one to read them from, and keeps that bag's words under the property's name. A window is
/// an object already: the base is virtual, so that it can be both.
///
/// Threads: different ones may be used at once, and const members of one at once.

#include "zorvane/platform/Build.h"
#include "zorvane/platform/Object.h"
#include "zorvane/platform/Text.h"
#include "zorvane/platform/Variant.h"

namespace zorvane {

class ZVPropertyBag;

class ZORVANE_EXPORT IZVPropertyBag : public virtual Object {
  public:
    /// The name under which CreatableClasses() makes another of this class, or "" for an object
    /// that is only ever restored in place.
    [[nodiscard]] virtual Text ClassName() const = 0;
    /// Called instead of ReadProperties when the bag holds nothing under the property's name.
    virtual void InitProperties() = 0;
    /// The object that contains this one; no bag ever asks.
    [[nodiscard]] virtual Variant ParentObject() = 0;
    /// One bag.ReadProperty per property, best with the present value as its Default. The bag may
    /// be kept; it is the object's alone. An object made by name gets this call first of all.
    virtual void ReadProperties(ZVPropertyBag& bag) = 0;
    /// One bag.WriteProperty per property.
    virtual void WriteProperties(ZVPropertyBag& bag) = 0;
};

}  // namespace zorvane
