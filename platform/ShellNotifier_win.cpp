#include "platform/ShellNotifier_win.h"

#include <shlobj.h>
#include <windows.h>

namespace lumora {

void WinShellNotifier::AssociationsChanged() { SHChangeNotify(SHCNE_ASSOCCHANGED, SHCNF_IDLIST, nullptr, nullptr); }

}  // namespace lumora
