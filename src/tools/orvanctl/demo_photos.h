// tools/orvanctl/demo_photos.h — drawn portraits of the demo students; no photos of anybody.
#pragma once

#include "tools/orvanctl/demo_random.h"

#include "core/program_folder.h"

#include <QStringList>

namespace orvanctl {

// \data\fotograf\NUMBER.jpg for every `each`th student; gives how many were drawn. Throws jet::Error when the
// folder cannot be made, std::runtime_error when a picture cannot be written.
int drawPhotos(const orvan::ProgramFolder& folder, const QStringList& numbers, int each, DemoRandom& random);

} // namespace orvanctl
