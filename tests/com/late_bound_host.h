// A host as the component server meets it: automation objects over the services object, the IDE's tree and
// the databases that the in-process tests use. It is as strict as a typed host can be: a text must come as a
// text, a number as a Long. It counts calls and living objects, and fails where a test wants it.
#pragma once

#include "com/com_ptr.h"
#include "hostmodel/globals.h"

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <oaidl.h>
#include <string>

namespace lintara::support {

struct LateBoundHost {
    // How the procedures take what they write back: as a reference to a Long, or to a variant, where they
    // leave the smallest integer type that holds the number, as scripts do.
    enum class References { Typed, Variants };
    References references = References::Typed;
    // What the objects give as their type information; null for none.
    com::ComPtr<ITypeInfo> typeInfo = nullptr;

    std::size_t invokes = 0;
    std::size_t nameLookups = 0;
    std::map<std::string, std::size_t> callsByName;  // "CodeModule.Lines"
    long liveObjects = 0;

    // Asked before each Invoke, with its place in their sequence, from 0. A code other than S_OK is what the
    // call returns instead; S_FALSE makes it succeed without a value.
    std::function<HRESULT(std::size_t index, const std::string& name, EXCEPINFO* exception)> fault = nullptr;
};

using LateBoundHostPtr = std::shared_ptr<LateBoundHost>;

// The services object over `globals`, which outlives what it hands out.
[[nodiscard]] com::ComPtr<IDispatch> LateBoundGlobals(hostmodel::Globals& globals, LateBoundHostPtr host);

}  // namespace lintara::support
