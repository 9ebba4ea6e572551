// tests/support/scripted_dialogs.h — Dialogs that a test scripts: what must be asked, in which order, with
// which answer. A question that is not scripted, and an answer that nobody asked for, fail the test.
#pragma once

#include "core/dialogs.h"
#include "support/qt_print.h"

#include <deque>
#include <gtest/gtest.h>
#include <iostream>

namespace orvan_test {

class ScriptedDialogs final : public orvan::Dialogs {
  public:
    ScriptedDialogs() = default;
    ~ScriptedDialogs() override { expectNothingLeft(); }

    // `text` must be the whole text; an empty title means any title.
    ScriptedDialogs& expectMessage(const QString& text, const QString& title = {}) {
        return add(Kind::Message, text, title, {}, false);
    }
    ScriptedDialogs& expectYesNo(const QString& text, orvan::Answer answer, const QString& title = {}) {
        return add(Kind::YesNo, text, title, {}, answer == orvan::Answer::Yes);
    }
    ScriptedDialogs& expectOkCancel(const QString& text, bool ok, const QString& title = {}) {
        return add(Kind::OkCancel, text, title, {}, ok);
    }
    ScriptedDialogs& expectInput(const QString& label, std::optional<QString> answer) {
        return add(Kind::Input, label, {}, std::move(answer), false);
    }
    // The person takes `answer`, which must be one of the choices; `choices`, when given, must be all of
    // them.
    ScriptedDialogs& expectChoice(const QString& text, std::optional<QString> answer,
                                  const QStringList& choices = {}) {
        choices_.push_back(choices);
        return add(Kind::Choice, text, {}, std::move(answer), false);
    }
    ScriptedDialogs& expectFile(const QString& title, std::optional<QString> answer) {
        return add(Kind::File, title, {}, std::move(answer), false);
    }
    ScriptedDialogs& expectFolder(const QString& title, std::optional<QString> answer) {
        return add(Kind::Folder, title, {}, std::move(answer), false);
    }
    // The next beginProgress is asked to stop after that many steps.
    void cancelProgressAfter(int steps) { cancelAfter_ = steps; }

    void expectNothingLeft() {
        for (const Expected& left : script_)
            ADD_FAILURE() << "never asked: " << left.text.toStdString();
        script_.clear();
    }

    void message(const QString& text, const QString& title, orvan::Icon) override {
        take(Kind::Message, text, title);
    }
    orvan::Answer askYesNo(const QString& text, const QString& title, orvan::Answer) override {
        return take(Kind::YesNo, text, title).yes ? orvan::Answer::Yes : orvan::Answer::No;
    }
    bool askOkCancel(const QString& text, const QString& title, orvan::Icon) override {
        return take(Kind::OkCancel, text, title).yes;
    }
    std::optional<QString> inputText(const QString& label, const QString& title, const QString&,
                                     orvan::InputKind) override {
        return take(Kind::Input, label, title).answer;
    }
    std::optional<qsizetype> choose(const QString& text, const QString& title, const QStringList& choices,
                                    qsizetype) override {
        const Expected expected = take(Kind::Choice, text, title);
        if (expected.kind != Kind::Choice) return {};
        const QStringList all = std::exchange(choices_.front(), {});
        choices_.pop_front();
        if (!all.isEmpty()) {
            EXPECT_EQ(choices.join('|'), all.join('|'));
        }
        if (!expected.answer) return {};
        EXPECT_TRUE(choices.contains(*expected.answer)) << expected.answer->toStdString();
        return choices.indexOf(*expected.answer);
    }
    std::optional<QString> chooseFile(const QString& title, const QString&, const QString&) override {
        return take(Kind::File, title, {}).answer;
    }
    std::optional<QString> chooseSaveFile(const QString& title, const QString&, const QString&) override {
        return take(Kind::File, title, {}).answer;
    }
    std::optional<QString> chooseFolder(const QString& title, const QString&) override {
        return take(Kind::Folder, title, {}).answer;
    }
    std::unique_ptr<orvan::Progress> beginProgress(const QString&, int) override {
        return std::make_unique<Steps>(std::exchange(cancelAfter_, -1));
    }

  private:
    enum class Kind { Message, YesNo, OkCancel, Input, Choice, File, Folder };
    struct Expected {
        Kind kind;
        QString text, title;
        std::optional<QString> answer;
        bool yes;
    };
    class Steps final : public orvan::Progress {
      public:
        explicit Steps(int cancelAfter) : left_(cancelAfter) {}
        void step(int, const QString&) override { left_ -= left_ > 0 ? 1 : 0; }
        bool cancelled() override { return left_ == 0; }

      private:
        int left_; // -1 = never
    };

    ScriptedDialogs& add(Kind kind, const QString& text, const QString& title, std::optional<QString> answer,
                         bool yes) {
        script_.push_back({kind, text, title, std::move(answer), yes});
        return *this;
    }
    Expected take(Kind kind, const QString& text, const QString& title) {
        if (script_.empty()) {
            ADD_FAILURE() << "not scripted: " << text.toStdString();
            return {kind, {}, {}, std::nullopt, false};
        }
        Expected expected = std::move(script_.front());
        script_.pop_front();
        EXPECT_EQ(static_cast<int>(expected.kind), static_cast<int>(kind)) << text.toStdString();
        EXPECT_EQ(expected.text, text);
        if (!expected.title.isEmpty()) {
            EXPECT_EQ(expected.title, title) << text.toStdString();
        }
        return expected;
    }

    std::deque<Expected> script_;
    std::deque<QStringList> choices_; // of the Choice entries, in their order
    int cancelAfter_ = -1;
};

} // namespace orvan_test
