// tests/support/window_checks.h — what a program can check of a window by itself: the way of the Tab key,
// names for screen readers, Alt letters, words of Qt's own, and cut controls. Each check returns its
// complaints; none is good.
#pragma once

#include <functional>
#include <QStringList>
#include <QWidget>

namespace orvan_test {

// Tab from the focused control on reaches each control of `window` that takes it, in reading order (down, or
// to the right), comes round and never leaves. REQUIRES: the focus is in the window.
QStringList tabComplaints(QWidget& window);

// Each control that takes the focus has a name.
QStringList nameComplaints(const QWidget& window);

// Alt letters of what is visible: each once, none of `taken` ("Alt+P").
QStringList letterComplaints(const QWidget& window, const QStringList& taken);

// Buttons with English standard words.
QStringList languageComplaints(const QWidget& window);

// Visible controls smaller than their contents, outside their parent, or over each other.
QStringList cutComplaints(const QWidget& window);

// Letters of Alt in texts such as "Kay&det".
QStringList lettersOf(const QStringList& texts);

// Runs `check` once, and once on each page of each tab widget.
void onEachPage(QWidget& window, const std::function<void(const QString& page)>& check);

} // namespace orvan_test
