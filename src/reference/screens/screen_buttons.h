// reference/screens/screen_buttons.h — the buttons that these windows share: same words, same Alt letters.
#pragma once

#include <functional>
#include <QPushButton>

namespace orvan {

// Windows that other windows open; no command of the menu stands behind them.
inline constexpr auto kProfessionsOfVersionKey = "BolumTanimi2";
inline constexpr auto kMainProfessionChangeKey = "AnaMeslekDegistir";

// Enter presses it; without the focus of the window's first field.
inline QPushButton* makeButton(const char* name, const QString& text, const QString& tip, QWidget* parent,
                               std::function<void()> pressed) {
    auto* button = new QPushButton(text, parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setToolTip(tip);
    button->setAutoDefault(true);
    QObject::connect(button, &QPushButton::clicked, parent, std::move(pressed));
    return button;
}

} // namespace orvan
