// jet/copy/convert.h — makes a Jet 4 file of a Jet 3 one (Access 97): tables with their rows, properties and
// indexes, relations, links and queries; texts from the file's code page to Unicode, keys made anew. Forms,
// reports, macros and modules are in a form of their own and stay behind, which the report tells.
#pragma once

#include "jet/copy/compact.h"

namespace jet {

// `in` is never changed. Errors as compactDatabase; InvalidArgument when `in` is no Jet 3 file.
CopyReport convertDatabase(const std::filesystem::path& in, const std::filesystem::path& out,
                           const CopyOptions& options = {});

} // namespace jet
