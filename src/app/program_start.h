// app/program_start.h — the start as the program does it: splash, formats of the computer, one running
// program a folder, the main window.
#pragma once

#include "app/application.h"
#include "core/screens/main_window.h"
#include "core/startup.h"
#include "widgets/splash.h"

#include <functional>
#include <memory>

namespace orvan {

std::unique_ptr<Splash> makeProgramSplash(); // with the program's name and release

class ProgramStart final : public StartHost {
  public:
    // `maintenance` runs after each sign-in. All must outlive it.
    ProgramStart(Application& application, const ProgramFolder& folder, std::function<void()> maintenance);

    void setWindow(MDIFormORVAN& window) { window_ = &window; } // before the start runs

    void stepBegins(StartStep step, const QString& name) override;
    bool claimFolder() override;
    void makeSplash() override;
    void setRegionalFormats() override;
    void showSplash() override;
    void showMainWindow() override;
    void maintain() override { maintenance_(); }

  private:
    Application& application_;
    const ProgramFolder& folder_;
    std::function<void()> maintenance_;
    MDIFormORVAN* window_ = nullptr;
    std::unique_ptr<Splash> splash_;
};

} // namespace orvan
