// tests/support/declining_dialogs.h — a person who says no to everything and expects no message: for tests
// that react to one kind of question and override just that one.
#pragma once

#include "support/scripted_dialogs.h"

namespace orvan_test {

class DecliningDialogs : public orvan::Dialogs {
  public:
    void message(const QString& text, const QString&, orvan::Icon) override {
        ADD_FAILURE() << text.toStdString();
    }
    orvan::Answer askYesNo(const QString&, const QString&, orvan::Answer) override {
        return orvan::Answer::No;
    }
    bool askOkCancel(const QString&, const QString&, orvan::Icon) override { return false; }
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
    std::unique_ptr<orvan::Progress> beginProgress(const QString& title, int total) override {
        return ScriptedDialogs().beginProgress(title, total);
    }
};

} // namespace orvan_test
