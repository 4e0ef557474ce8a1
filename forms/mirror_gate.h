// Tells a renderer who changes a native control: the form or the user.
#pragma once

namespace lintara::forms {

// A renderer's views ask it before they hand over what a native control says: while a change of the form is
// carried over to the native controls, the user has done nothing.
class MirrorGate {
  public:
    // From here to the end of the block, changes are the form's.
    class Mirroring {
      public:
        explicit Mirroring(MirrorGate& gate) : gate_(gate) { ++gate_.depth_; }
        ~Mirroring() { --gate_.depth_; }
        Mirroring(const Mirroring&) = delete;
        Mirroring& operator=(const Mirroring&) = delete;

      private:
        MirrorGate& gate_;
    };

    [[nodiscard]] bool IsMirroring() const { return depth_ > 0; }

  private:
    int depth_ = 0;
};

}  // namespace lintara::forms
