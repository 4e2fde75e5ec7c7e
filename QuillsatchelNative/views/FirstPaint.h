#pragma once

#include <functional>

class MainQueue;
class QWidget;

/// Runs `work` on `mainQueue` after `widget` is first painted. It then runs in a later iteration of
/// the event loop than the paint event, when the frame is on the screen. Never runs if the widget
/// is not painted or is destroyed first.
void afterFirstPaint(QWidget &widget, MainQueue &mainQueue, std::function<void()> work);
