// The host's part, as the benchmarks play it: a walk over the procedure names of all components, with one
// call of the library for each.
#pragma once

#include "assistant/lintara.h"
#include "workspace/workspace.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace lintara::bench {

// The label that removal takes for the handlers'.
inline constexpr TextView SavedLabel = u"hErr";

// A workspace of one module with those bytes, whose shown code begins at `codeBegin`.
[[nodiscard]] std::unique_ptr<workspace::Workspace> WorkspaceWith(const std::string& bytes,
                                                                  std::size_t codeBegin);

// Each walk goes through the components and names in order of appearance.
class ProjectWalk {
  public:
    // The first project of the workspace.
    explicit ProjectWalk(workspace::Workspace& workspace);

    // How many names a walk calls for.
    [[nodiscard]] std::size_t names() const { return names_; }

    void InsertNumbers();
    void RemoveNumbers();
    void InsertHandlers(TextView label);
    void RemoveHandlers();
    // Handlers first, then numbers, procedure by procedure; and numbers first, then handlers.
    void InsertBoth();
    void RemoveBoth();

  private:
    struct ComponentNames {
        Text component;
        std::vector<Text> procedures;
    };

    template <class Call>
    void ForEachName(Call call);
    void InsertHandler(const Text& component, const Text& name, TextView label);

    Lintara library_;
    Text project_;
    std::vector<ComponentNames> components_;
    std::size_t names_ = 0;
};

}  // namespace lintara::bench
