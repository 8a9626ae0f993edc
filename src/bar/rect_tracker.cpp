#include "bar/rect_tracker.h"

#include <stdexcept>

#include "ports/port.h"
#include "ports/window_system.h"

bool TrRectTracker::Track(HostWindow*, win::POINT) {
    if (Use<WindowSystem>().Capture() != nullptr)
        return false;
    throw std::logic_error("a rubber band drag needs the mouse captured elsewhere");
}
