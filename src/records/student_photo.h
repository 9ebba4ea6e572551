// records/student_photo.h — the photo of a student: data\fotograf\NUMBER.jpg.
#pragma once

#include "core/program_folder.h"

#include <vector>

namespace orvan {

QString photoFile(const ProgramFolder& folder, const QString& studentNo); // whole path, there or not

struct PhotoMove {
    QString from, to; // student numbers
};
// Gives the photos their students' new numbers; numbers may be swapped. A photo that is there already under a
// new number, and is not moved away, is not touched. Returns a sentence for each photo that kept its old
// name.
QStringList renamePhotos(const ProgramFolder& folder, const std::vector<PhotoMove>& moves);

} // namespace orvan
