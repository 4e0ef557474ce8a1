// The properties of a control as its container keeps them from one use to the next: those that differ from
// their defaults.
#pragma once

#include "base/text.h"

#include <cstdint>
#include <map>

namespace lintara::forms {

class PropertyBag {
  public:
    // The kept value, or `absent` when there is none.
    [[nodiscard]] std::int64_t Read(TextView name, std::int64_t absent) const {
        const auto found = values_.find(name);
        return found == values_.end() ? absent : found->second;
    }

    // Keeps `value`, unless it is what Read gives without it.
    void Write(TextView name, std::int64_t value, std::int64_t absent) {
        if (value == absent) {
            values_.erase(Text(name));
        } else {
            values_.insert_or_assign(Text(name), value);
        }
    }

    [[nodiscard]] bool IsEmpty() const { return values_.empty(); }

  private:
    std::map<Text, std::int64_t, std::less<>> values_;
};

}  // namespace lintara::forms
