// jet/table/database_impl.h — ties Database to the open file its statements work on.
#pragma once

#include "jet/database.h"
#include "jet/table/open_database.h"

namespace jet {

struct Database::Impl : OpenDatabase {
    using OpenDatabase::OpenDatabase;
};

} // namespace jet
