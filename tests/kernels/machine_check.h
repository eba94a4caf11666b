// The operations of a machine compared with their plain definition, at each level.
#pragma once
#include "kernels/level.h"

namespace kel {

struct MachineCheck {
    const char* (*firstFault)(unsigned seed); // the operation that differs, for inputs made from the seed; null: none
};

KEL_KERNEL_TABLES(MachineCheck, machineCheck)
inline const MachineCheck& machineCheck() { KEL_RETURN_TABLE_IN_USE(MachineCheck, machineCheck) }

} // namespace kel
