// core/screens/menu_plan.h — where each command key stands in the menus and the toolbar. Data only; commands
// behind which nothing stands yet are left out by the main window.
#pragma once

#include <span>

namespace orvan {

struct MenuPlan;

struct MenuCommand {
    const char* key;                   // command key; nullptr: a line between groups, or a menu
    const char* text;                  // with an Alt letter, unique in its menu
    const char* shortcut = nullptr;    // key sequence, or none
    const char* toolbar = nullptr;     // short text in the toolbar, or none
    const MenuPlan* submenu = nullptr; // a menu inside the menu; the rest is unused then
};

struct MenuPlan {
    const char* name; // object name
    const char* text;
    std::span<const MenuCommand> commands;
};

std::span<const MenuPlan> menuPlans();

} // namespace orvan
