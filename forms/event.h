// An event of a control: the one handler that its container gave it.
#pragma once

#include <functional>
#include <utility>

namespace lintara::forms {

template <class... Arguments>
class Event {
  public:
    // Makes `handler` the one that is called from now on.
    void Handle(std::function<void(Arguments...)> handler) { handler_ = std::move(handler); }

    // Calls the handler, if there is one.
    void Raise(Arguments... arguments) const {
        if (handler_) {
            handler_(arguments...);
        }
    }

  private:
    std::function<void(Arguments...)> handler_;
};

}  // namespace lintara::forms
