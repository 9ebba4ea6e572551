// widgets/qt_dialogs.h — Dialogs as boxes on the screen. Buttons carry Turkish words with Alt letters
// whatever the system's language is; Esc and closing a box mean Hayır or İptal.
#pragma once

#include "core/dialogs.h"

class QWidget;

namespace orvan {

class QtDialogs final : public Dialogs {
  public:
    QtDialogs() = default;

    void message(const QString& text, const QString& title, Icon icon = Icon::Information) override;
    Answer askYesNo(const QString& text, const QString& title, Answer preset = Answer::No) override;
    bool askOkCancel(const QString& text, const QString& title, Icon icon = Icon::Question) override;
    std::optional<QString> inputText(const QString& label, const QString& title, const QString& initial = {},
                                     InputKind kind = InputKind::Plain) override;
    // A list with a line to type part of a choice into.
    std::optional<qsizetype> choose(const QString& text, const QString& title, const QStringList& choices,
                                    qsizetype preset = 0) override;
    std::optional<QString> chooseFile(const QString& title, const QString& filter,
                                      const QString& startFolder = {}) override;
    std::optional<QString> chooseSaveFile(const QString& title, const QString& filter,
                                          const QString& suggested = {}) override;
    std::optional<QString> chooseFolder(const QString& title, const QString& startFolder = {}) override;
    // progress_box.h. Without a known length there is no button to stop.
    std::unique_ptr<Progress> beginProgress(const QString& title, int total) override;
};

// "Resimler (*.bmp;*.jpg)|*.bmp;*.jpg|Tümü|*.*" as Qt wants it: "Resimler (*.bmp *.jpg);;Tümü (*.*)".
QString qtFileFilter(const QString& filter);
// ".jpg" of the filter's first pattern, without the dot; empty when it names no extension.
QString defaultSuffix(const QString& filter);

} // namespace orvan
