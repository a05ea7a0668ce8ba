#pragma once

namespace lumora {

// Port: is another instance of Lumora already running?
class InstanceProbe {
public:
    virtual ~InstanceProbe() = default;
    virtual bool AnotherInstanceRuns() = 0;
};

}  // namespace lumora
