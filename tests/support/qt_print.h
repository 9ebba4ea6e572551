// tests/support/qt_print.h — Qt's texts in the messages of failing tests.
#pragma once

#include <ostream>
#include <QString>

inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }
