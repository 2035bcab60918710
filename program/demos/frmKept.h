#pragma once
// frmKept: what is in a property bag, as a tree: the windows that have been closed, and of each its
// properties.

#include "program/forms/Form.h"
#include "zorvane/propbag/ZVPropertyBag.h"

namespace zorvane {

class frmKept : public Form {
    Q_OBJECT
  public:
    // Shows the bag as it is now, read from its stream as a viewer of its file reads it.
    explicit frmKept(const ZVPropertyBag& bag);
};

}  // namespace zorvane
