// app/own_files.h — files that come with the program and are looked for in the program folder.
#pragma once

#include "core/program_folder.h"

namespace orvan {

// Copies what lies beside the program (the guide and the release notes, the templates of "\Mdx\") into the
// program folder where it is missing there or is of another release (size or time differ). A folder that
// cannot be written is no error here: what needs the file says that it is missing. `programPlace`: the folder
// of the program's own file.
void placeOwnFiles(const ProgramFolder& folder, const QString& programPlace);

} // namespace orvan
