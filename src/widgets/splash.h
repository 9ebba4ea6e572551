// widgets/splash.h — the first window while the program starts: its name, release, the school where it is
// known, and which step runs. Painted, at any scale.
#pragma once

#include <QSplashScreen>

namespace orvan {

class Splash : public QSplashScreen {
    Q_OBJECT

  public:
    Splash(const QString& program, const QString& subtitle, const QString& release);

    void setSchool(const QString& name);
    // What is being done now ("Veritabanları açılıyor…"); painted at once.
    void showStep(const QString& step);

  protected:
    void drawContents(QPainter* painter) override;

  private:
    QString program_, subtitle_, release_, school_, step_;
};

} // namespace orvan
