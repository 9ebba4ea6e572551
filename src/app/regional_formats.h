// app/regional_formats.h — dates are dd.MM.yyyy, decimals have a comma, thousands a point.
#pragma once

namespace orvan {

// The program's own formats; on Windows also those of the computer, when they differ, with a notice to the
// other programs: older tools of the centre read the dates of the same files by them.
void setRegionalFormats();

} // namespace orvan
