// What the methods that name a project or a component share.
#pragma once

#include "cli/serve/arguments.h"
#include "cli/serve/method.h"
#include "cli/serve/session.h"

namespace lintara::cli {

// The parameters `project` and `component`, then `more`.
[[nodiscard]] std::vector<MethodParameter> ComponentParameters(std::vector<MethodParameter> more = {});

// What the request names; throws when it is not there.
[[nodiscard]] workspace::Project& ProjectOf(Session& session, const Arguments& arguments);
[[nodiscard]] workspace::Component& ComponentOf(Session& session, const Arguments& arguments);

}  // namespace lintara::cli
