#pragma once
/// \class zorvane::TolerantReading
/// Reads bags that hold objects of classes that this program does not have.
///
///     TolerantReading reading;
///     const Variant window = bag.ReadProperty(u"Window");
///     for (const SkippedObject& object : reading.Skipped()) ...  // say what is missing
///
/// While one lives, ReadProperty on its thread takes an object whose class cannot be made for a
/// property that was never stored, and gives its Default, where it raises 429 otherwise; so it does
/// within the objects that it restores, however deep. What was skipped stays in the bag that was
/// read, and is not written by objects that never saw it. They end in the order opposite to that in
/// which they began; only the innermost notes.

#include <vector>

#include "zorvane/platform/Build.h"
#include "zorvane/platform/Text.h"

namespace zorvane {

struct SkippedObject {
    Text Name;       ///< of the property
    Text ClassName;  ///< as it was stored
};

class ZORVANE_EXPORT TolerantReading {
  public:
    TolerantReading() noexcept;
    TolerantReading(const TolerantReading&) = delete;
    TolerantReading& operator=(const TolerantReading&) = delete;
    ~TolerantReading();

    /// In the order of reading; an object that was read twice stands there twice.
    [[nodiscard]] const std::vector<SkippedObject>& Skipped() const noexcept { return skipped_; }

    /// For whoever reads: notes the object, if there is a tolerant reading, and says whether.
    [[nodiscard]] static bool Skip(const Text& name, const Text& className);

  private:
    TolerantReading* outer_;
    std::vector<SkippedObject> skipped_;
};

}  // namespace zorvane
