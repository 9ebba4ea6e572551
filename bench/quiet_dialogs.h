// bench/quiet_dialogs.h — Dialogs for measurements: messages are printed, every question is agreed to.
#pragma once

#include "core/dialogs.h"

#include <cstdio>

class QuietDialogs final : public orvan::Dialogs {
  public:
    void message(const QString& text, const QString&, orvan::Icon) override {
        std::printf("%s\n", text.toUtf8().constData());
    }
    orvan::Answer askYesNo(const QString&, const QString&, orvan::Answer) override {
        return orvan::Answer::Yes;
    }
    bool askOkCancel(const QString&, const QString&, orvan::Icon) override { return true; }
    std::optional<QString> inputText(const QString&, const QString&, const QString&,
                                     orvan::InputKind) override {
        return {};
    }
    std::optional<qsizetype> choose(const QString&, const QString&, const QStringList&, qsizetype) override {
        return {};
    }
    std::optional<QString> chooseFile(const QString&, const QString&, const QString&) override { return {}; }
    std::optional<QString> chooseSaveFile(const QString&, const QString&, const QString&) override {
        return {};
    }
    std::optional<QString> chooseFolder(const QString&, const QString&) override { return {}; }
    std::unique_ptr<orvan::Progress> beginProgress(const QString&, int) override {
        struct Quiet final : orvan::Progress {
            void step(int, const QString&) override {}
            bool cancelled() override { return false; }
        };
        return std::make_unique<Quiet>();
    }
};
