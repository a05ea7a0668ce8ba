#pragma once
#include <string_view>

namespace lumora {

// Port: another instance of Lumora, already running.
class InstanceProbe {
public:
    virtual ~InstanceProbe() = default;
    virtual bool AnotherInstanceRuns() = 0;
    // Gives it the command tail ("*" for none) at once; false when it does not answer.
    virtual bool HandOver(std::string_view argument) = 0;
    // After HandOver failed and the argument went into the slot: has it read there once it answers again.
    virtual void PointToSlot() = 0;
};

}  // namespace lumora
