// A screen that remembers the shapes its mouse pointer was given.
#pragma once

#include "hostmodel/screen.h"

#include <stdexcept>
#include <vector>

namespace lintara::support {

class RecordedScreen : public hostmodel::Screen {
  public:
    enum class Mood { Good, Failing, Throwing };

    std::vector<hostmodel::MousePointer> pointers;
    Mood mood = Mood::Good;

    Result<void> SetMousePointer(hostmodel::MousePointer pointer) override {
        pointers.push_back(pointer);
        if (mood == Mood::Throwing) {
            throw std::runtime_error("the screen is gone");
        }
        return mood == Mood::Good ? Result<void>() : Failure(ErrorNumber::HostFailure, "no screen");
    }
};

}  // namespace lintara::support
