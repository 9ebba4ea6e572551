// records/display_value.h — stored codes of a student's fields as the texts that people read.
#pragma once

#include "jet/sql/session.h"

#include <QString>

namespace orvan {

// Sex, marital status, blood group, religion, prior schooling, profession, main profession and dates; any
// other field is shown as stored. `field` without regard to case; codes are looked up in the level database.
QString displayValue(jet::SqlSession& level, const QString& field, const jet::Value& stored);

} // namespace orvan
