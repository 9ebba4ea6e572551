// tools/orvanctl/console_dialogs.h — Dialogs for a terminal: messages are printed, questions take the safe
// answer.
#pragma once

#include "core/dialogs.h"

namespace orvanctl {

class ConsoleDialogs final : public orvan::Dialogs {
  public:
    ConsoleDialogs() = default;
    void message(const QString& text, const QString& title, orvan::Icon icon) override;
    orvan::Answer askYesNo(const QString& text, const QString& title, orvan::Answer preset) override;
    bool askOkCancel(const QString& text, const QString& title, orvan::Icon icon) override;
    std::optional<QString> inputText(const QString& label, const QString& title, const QString& initial,
                                     orvan::InputKind kind) override;
    std::optional<qsizetype> choose(const QString& text, const QString& title, const QStringList& choices,
                                    qsizetype preset) override;
    std::optional<QString> chooseFile(const QString& title, const QString& filter,
                                      const QString& folder) override;
    std::optional<QString> chooseSaveFile(const QString& title, const QString& filter,
                                          const QString& name) override;
    std::optional<QString> chooseFolder(const QString& title, const QString& folder) override;
    std::unique_ptr<orvan::Progress> beginProgress(const QString& title, int total) override;
};

} // namespace orvanctl
