#pragma once

/// The desktop's message bus.
namespace SessionBus {

/// Keeps the message library from starting a bus of its own, as another process, where the desktop
/// has none. To be called before anything else uses the bus.
void useOnlyIfThere();

}  // namespace SessionBus
