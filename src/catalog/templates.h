// catalog/templates.h — writes the empty template databases of Mdx\ from the declarations.
#pragma once

#include <QString>
#include <QStringList>

namespace orvan {

// Creates `folder` when missing and writes the seven templates there; an existing one is replaced as a whole.
// Returns the names written. Throws jet::Error.
QStringList writeTemplates(const QString& folder);

} // namespace orvan
