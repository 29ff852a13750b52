#pragma once

/// The model belongs to the main thread and holds no locks. Its entry points call `check`.
namespace MainThread {

/// Whether the caller runs on the thread that the process started with. Costs about a nanosecond
/// and needs no application object.
bool isCurrent() noexcept;

/// Stops the process on any other thread (`plistCheckFailed`).
void check();

}  // namespace MainThread
