#include "settings/Docking.h"

#include <cstdlib>

namespace lumora {
namespace {

bool Near(long long a, long long b, int snap) { return std::llabs(a - b) <= snap; }

WindowRect Offset(const WindowRect& r, long long dx, long long dy) {
    return {r.left + dx, r.top + dy, r.right + dx, r.bottom + dy};
}

}  // namespace

ListDock SnapDock(const WindowRect& moving, const WindowRect& owner, int snap) {
    if (Near(moving.left, owner.right, snap) && Near(moving.top, owner.top, snap)) return ListDock::Right;
    if (Near(moving.top, owner.bottom, snap) && Near(moving.left, owner.left, snap)) return ListDock::Below;
    return ListDock::None;
}

WindowRect SnapPlace(const WindowRect& moving, const WindowRect& owner, int snap) {
    switch (SnapDock(moving, owner, snap)) {
        case ListDock::Right:
            return Offset(moving, owner.right - moving.left, owner.top - moving.top);
        case ListDock::Below:
            return Offset(moving, owner.left - moving.left, owner.bottom - moving.top);
        case ListDock::None:
            break;
    }
    return moving;
}

}  // namespace lumora
