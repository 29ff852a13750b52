#pragma once

/// The language in which the program speaks.
namespace Language {

/// Loads the texts in the language that the user likes best among those there are, English at the
/// last, with those of Qt's own buttons and dialogs where they are installed. Windows are laid out
/// in the direction of the user's script, whatever the texts. The application must be there.
void load();

}  // namespace Language
