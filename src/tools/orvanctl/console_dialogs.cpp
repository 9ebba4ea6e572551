// tools/orvanctl/console_dialogs.cpp — see console_dialogs.h.
#include "tools/orvanctl/console_dialogs.h"

#include <cstdio>

namespace orvanctl {
namespace {

void print(const QString& text, const QString& title) {
    std::fprintf(stderr, "%s: %s\n", title.toUtf8().constData(), text.toUtf8().constData());
}

class SilentProgress final : public orvan::Progress {
  public:
    void step(int, const QString&) override {}
    bool cancelled() override { return false; }
};

} // namespace

void ConsoleDialogs::message(const QString& text, const QString& title, orvan::Icon) { print(text, title); }

orvan::Answer ConsoleDialogs::askYesNo(const QString& text, const QString& title, orvan::Answer) {
    print(text, title);
    return orvan::Answer::No;
}

bool ConsoleDialogs::askOkCancel(const QString& text, const QString& title, orvan::Icon) {
    print(text, title);
    return false;
}

std::optional<QString> ConsoleDialogs::inputText(const QString&, const QString&, const QString&,
                                                 orvan::InputKind) {
    return std::nullopt;
}
std::optional<qsizetype> ConsoleDialogs::choose(const QString& text, const QString& title, const QStringList&,
                                                qsizetype) {
    print(text, title);
    return std::nullopt;
}
std::optional<QString> ConsoleDialogs::chooseFile(const QString&, const QString&, const QString&) {
    return std::nullopt;
}
std::optional<QString> ConsoleDialogs::chooseSaveFile(const QString&, const QString&, const QString&) {
    return std::nullopt;
}
std::optional<QString> ConsoleDialogs::chooseFolder(const QString&, const QString&) { return std::nullopt; }

std::unique_ptr<orvan::Progress> ConsoleDialogs::beginProgress(const QString&, int) {
    return std::make_unique<SilentProgress>();
}

} // namespace orvanctl
