#pragma once
/// \class zorvane::Classes
/// The list of classes that can be created by name, keyed by class identifier.
///
/// Threads: many may create at once, by CreatableClasses() too, while nobody registers.

#include <functional>
#include <map>

#include "zorvane/platform/Build.h"
#include "zorvane/platform/Object.h"
#include "zorvane/platform/Text.h"

namespace zorvane {

/// The first half of every class identifier.
inline constexpr char16_t kProjectName[] = u"ZorvaneDemoProject";

/// "ZorvaneDemoProject" + "." + the class's plain name.
[[nodiscard]] ZORVANE_EXPORT Text ClassIdentifier(const Text& typeName);

class ZORVANE_EXPORT Classes {
  public:
    using Maker = std::function<Ref<Object>()>;

    /// Names are matched without regard to case; a later registration replaces an earlier one.
    void Register(const Text& className, Maker maker);
    /// A new instance; raises 429 for a name that is not registered, or whose maker makes none.
    [[nodiscard]] Ref<Object> Create(const Text& className) const;

  private:
    struct Before {
        bool operator()(const Text& left, const Text& right) const noexcept;
    };
    std::map<Text, Maker, Before> makers_;
};

/// The list of this program. Whoever starts the program fills it; nothing registers by itself.
[[nodiscard]] ZORVANE_EXPORT Classes& CreatableClasses();

}  // namespace zorvane
