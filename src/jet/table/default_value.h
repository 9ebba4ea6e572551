// table/default_value.h — the default of a field: the Jet expression of its DefaultValue property, as far as
// a value can be told from it without an expression evaluator: constants, Now(), Date(), Time().
#pragma once

#include "jet/format/table_def.h"
#include "jet/value.h"

namespace jet {

class DefaultValue {
  public:
    // Any other expression, and one whose value is none of the field's type, is no default: null.
    static DefaultValue of(const FieldDef& field);

    Value at(Date now) const; // of the field's type; null when there is none

  private:
    enum class Kind { Constant, Now, Today, TimeOfDay };
    Kind kind_ = Kind::Constant;
    Value constant_;
};

} // namespace jet
