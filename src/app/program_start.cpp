// app/program_start.cpp — see program_start.h.
#include "app/program_start.h"

#include "app/own_files.h"
#include "app/regional_formats.h"
#include "core/structure_check.h"

#include <QScreen>

namespace orvan {

ProgramStart::ProgramStart(Application& application, const ProgramFolder& folder,
                           std::function<void()> maintenance)
    : application_(application), folder_(folder), maintenance_(std::move(maintenance)) {}

void ProgramStart::stepBegins(StartStep, const QString& name) {
    if (splash_ && splash_->isVisible()) splash_->showStep(name + QStringLiteral("…"));
}

bool ProgramStart::claimFolder() { return application_.claimFolder(folder_.path()); }

std::unique_ptr<Splash> makeProgramSplash() {
    return std::make_unique<Splash>(QStringLiteral("ORVAN"),
                                    QStringLiteral("Mesleki Eğitim Merkezi Öğrenci Takip Programı"),
                                    releaseText(thisRelease()));
}

void ProgramStart::makeSplash() {
    splash_ = makeProgramSplash();
    splash_->move(QApplication::primaryScreen()->availableGeometry().center() - splash_->rect().center());
}

void ProgramStart::setRegionalFormats() { orvan::setRegionalFormats(); }

void ProgramStart::showSplash() {
    splash_->show();
    QApplication::processEvents(); // painted before the work begins
    placeOwnFiles(folder_, QApplication::applicationDirPath());
}

void ProgramStart::showMainWindow() {
    QApplication::processEvents();
    window_->showInPlace();
    splash_->finish(window_);
    splash_.reset();
}

} // namespace orvan
