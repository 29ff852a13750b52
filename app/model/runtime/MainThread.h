#pragma once

/// The model belongs to the main thread and holds no locks. Its entry points call `check`.
namespace MainThread {

/// Stops the process on any other thread than the one it started with (`plistCheckFailed`). Costs
/// about a nanosecond and needs no application object.
void check();

}  // namespace MainThread
