// Runs a piece of work on a large stack of its own. Template recursion uses the machine stack,
// and the process's main stack (8 MB by default on Linux) holds only a few thousand nested
// template calls; a run therefore executes on a stack of 1 GB, reserved but only committed as
// it is used. The engine's depth limits keep every recursion well inside it. This is the one
// place that deals with the machine stack.
#pragma once
#include <functional>

namespace XsltPrivate {

// Calls `work` on the large stack and rethrows whatever it threw. Without the means to make
// such a stack, `work` runs on the present one.
void RunOnLargeStack(const std::function<void()>& work);

}  // namespace XsltPrivate
