#pragma once
// Port: tells the Windows shell that file associations changed, so that Explorer shows the new icons
// and verbs without a restart.
namespace lumora {

class ShellNotifier {
public:
    virtual ~ShellNotifier() = default;
    virtual void AssociationsChanged() = 0;
};

}  // namespace lumora
