#pragma once

#include <QLineEdit>
#include <QString>

namespace sondrix {

// Drops typed characters that a field doesn't take. Pasted text passes.
// signs: the field takes the minus sign beside the digits.
void FilterDigits(QLineEdit* field, bool signs);

// Typing fills the field up to so many characters.
void FilterLength(QLineEdit* field, int characters);

}  // namespace sondrix
