#pragma once
// The application object as the program sets it up: its name, version and style. Window and
// box titles stay exactly as the program gives them: no name is added to them.

namespace nerit::ui {

void set_up_application();

}  // namespace nerit::ui
