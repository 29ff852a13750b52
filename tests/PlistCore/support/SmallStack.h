#pragma once

#include <functional>

/// Runs `work` to its end in a thread with a stack of 8 MB, whatever the limits of the process:
/// whoever recursed over the depth of a value would not survive it.
void runOnSmallStack(const std::function<void()>& work);
