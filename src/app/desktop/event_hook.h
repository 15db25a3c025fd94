#pragma once

#include <QEvent>
#include <QObject>
#include <functional>
#include <utility>

namespace sondrix {

// Looks at the events of the objects on which it is installed; an event for which the look returns true goes
// no further. Lives as long as its parent.
class EventHook : public QObject {
 public:
  using Look = std::function<bool(QObject*, QEvent*)>;
  EventHook(QObject* parent, Look look) : QObject(parent), look_(std::move(look)) {}
  bool eventFilter(QObject* watched, QEvent* event) override { return look_(watched, event); }

 private:
  Look look_;
};

}  // namespace sondrix
