#pragma once
// An object that counts how many of its kind live, to prove that each is released exactly once.

#include <functional>

#include "zorvane/platform/Object.h"

namespace zorvane {

class CountedObject : public Object {
  public:
    explicit CountedObject(std::function<void()> whenReleased = {})
        : whenReleased_(std::move(whenReleased)) {
        ++Alive();
    }
    CountedObject(const CountedObject&) = delete;
    CountedObject& operator=(const CountedObject&) = delete;
    ~CountedObject() override {
        --Alive();
        if (whenReleased_) whenReleased_();
    }

    [[nodiscard]] Text TypeName() const override { return u"CountedObject"; }
    static int& Alive() {
        static int alive = 0;
        return alive;
    }

  private:
    std::function<void()> whenReleased_;  // runs in the destructor, as a release that calls back
};

}  // namespace zorvane
