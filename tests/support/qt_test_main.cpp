// tests/support/qt_test_main.cpp — main() of every test program with windows: the offscreen screen, Turkish
// formats as the program sets them, and a failure for each unexpected warning of Qt.
#include <gtest/gtest.h>
#include <QApplication>
#include <QLocale>

namespace {

void failOnWarning(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtDebugMsg || type == QtInfoMsg) return;
    if (text.startsWith(QStringLiteral("This plugin does not support")))
        return; // the offscreen screen itself
    ADD_FAILURE() << "Qt warned: " << text.toStdString();
}

} // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QLocale::setDefault(QLocale(QLocale::Turkish, QLocale::Turkey));
    QApplication app(argc, argv);
    qInstallMessageHandler(failOnWarning);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setEffectEnabled(Qt::UI_AnimateCombo, false);
    return RUN_ALL_TESTS();
}
