#include "app/desktop/key_filter.h"

#include "app/desktop/event_hook.h"

#include <QKeyEvent>
#include <functional>
#include <utility>

namespace sondrix {
namespace {

// The character that a key types, null for keys that type none (arrows, backspace, shortcuts).
QChar TypedBy(const QKeyEvent& key) {
  const QString text = key.text();
  if (text.isEmpty() || !text.front().isPrint()) return {};
  const Qt::KeyboardModifiers modifiers = key.modifiers();
  const bool isAltGr = modifiers.testFlag(Qt::ControlModifier) && modifiers.testFlag(Qt::AltModifier);
  return modifiers.testFlag(Qt::ControlModifier) && !isAltGr ? QChar() : text.front();
}

void FilterTyping(QLineEdit* field, std::function<bool(QChar)> takes) {
  field->installEventFilter(new EventHook(field, [takes = std::move(takes)](QObject*, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return false;
    const QChar typed = TypedBy(*static_cast<QKeyEvent*>(event));
    return !typed.isNull() && !takes(typed);
  }));
}

}  // namespace

void FilterDigits(QLineEdit* field, bool signs) {
  FilterTyping(field, [signs](QChar typed) {
    return (typed >= QLatin1Char('0') && typed <= QLatin1Char('9')) || (signs && typed == QLatin1Char('-'));
  });
}

void FilterLength(QLineEdit* field, int characters) {
  FilterTyping(field, [field, characters](QChar) {
    return field->text().size() - field->selectedText().size() < characters;
  });
}

}  // namespace sondrix
