// core/dialogs.h — the only way a rule speaks to a person. The windows, the tests and the command line each
// give their own. A rule calls it in the order the system fixes and with the system's own texts; it never
// formats a window.
#pragma once

#include <memory>
#include <optional>
#include <QString>
#include <QStringList>

namespace orvan {

enum class Icon { None, Information, Question, Warning, Critical };
enum class Answer { No, Yes };
enum class InputKind { Plain, Password };

// A running piece of long work. Ends (the bar closes) when it is destroyed.
class Progress {
  public:
    virtual ~Progress() = default;
    virtual void step(int done, const QString& text = {}) = 0; // done: 0..total of beginProgress
    virtual bool cancelled() = 0;                              // the person asked to stop
    // Stopping this work undoes all of it: its button says "İptal", else "Durdur". Call before the first
    // step.
    virtual void stopUndoesAll() {}
};

class Dialogs {
  public:
    virtual ~Dialogs() = default;

    virtual void message(const QString& text, const QString& title, Icon icon = Icon::Information) = 0;
    // "Evet" / "Hayır". Closing the box counts as No.
    virtual Answer askYesNo(const QString& text, const QString& title, Answer preset = Answer::No) = 0;
    // "Tamam" / "İptal"; true for Tamam.
    virtual bool askOkCancel(const QString& text, const QString& title, Icon icon = Icon::Question) = 0;
    // Nothing when the person cancels.
    virtual std::optional<QString> inputText(const QString& label, const QString& title,
                                             const QString& initial = {},
                                             InputKind kind = InputKind::Plain) = 0;
    // Place in `choices` of the one that the person takes; `preset` is the one marked at first. Nothing when
    // he cancels. REQUIRES: choices is not empty.
    virtual std::optional<qsizetype> choose(const QString& text, const QString& title,
                                            const QStringList& choices, qsizetype preset = 0) = 0;
    // `filter` as "Resim Dosyaları (*.bmp;*.jpg)|*.bmp;*.jpg". Whole path, or nothing when cancelled.
    virtual std::optional<QString> chooseFile(const QString& title, const QString& filter,
                                              const QString& startFolder = {}) = 0;
    virtual std::optional<QString> chooseSaveFile(const QString& title, const QString& filter,
                                                  const QString& suggested = {}) = 0;
    virtual std::optional<QString> chooseFolder(const QString& title, const QString& startFolder = {}) = 0;
    // Never null. `total` 0 = length not known (the please-wait indicator).
    virtual std::unique_ptr<Progress> beginProgress(const QString& title, int total) = 0;

    bool confirms(const QString& text, const QString& title) { return askYesNo(text, title) == Answer::Yes; }
};

} // namespace orvan
