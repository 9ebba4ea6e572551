// catalog/templates.h — writes the template databases of Mdx\ from the declarations: empty but for the lists
// a new centre begins with, and the ready-made curricula in KALFA.MDX and USTA.MDX.
#pragma once

#include <QString>
#include <QStringList>

namespace orvan {

// Creates `folder` when missing and writes the seven templates there; an existing one is replaced as a whole.
// Returns the names written. Throws jet::Error.
QStringList writeTemplates(const QString& folder);

} // namespace orvan
