// jet/table/permissions.h — the rows of MSysACEs: who may do what with which object. We check none of them;
// we write them so that other programs find every object of the file usable.
#pragma once

#include "jet/table/table_source.h"

namespace jet {

// Gives a new object what its container hands on to the objects in it. REQUIRES: inside a write.
void inheritPermissions(TableSource& source, int32_t container, int32_t object);

// Removes every row of an object. REQUIRES: inside a write.
void removePermissions(TableSource& source, int32_t object);

struct Permission {
    int32_t object = 0;
    Bytes who;             // security id
    int32_t rights = 0;    // access mask
    bool handedOn = false; // new objects in this container get it too
};
void addPermission(TableSource& source, const Permission& permission); // REQUIRES: inside a write

} // namespace jet
