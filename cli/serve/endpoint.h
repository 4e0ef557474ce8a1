// The protocol: JSON-RPC 2.0, one value a line. Reads one line, does what it asks, writes the answer as one
// line or none. Nothing that a line can hold makes it throw.
#pragma once

#include "cli/serve/session.h"
#include "cli/streams.h"

#include <string_view>

namespace lintara::cli {

class Endpoint {
  public:
    Endpoint(Session& session, Sink& out) : session_(session), out_(out) {}

    // The line without its line feed. The answers of a batch are written as they come.
    void Serve(std::string_view line);
    // Answers a line that is longer than `longest` bytes and was not kept.
    void RefuseLongLine(std::size_t longest);

  private:
    Session& session_;
    Sink& out_;
};

}  // namespace lintara::cli
