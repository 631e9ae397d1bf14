#pragma once

class QSize;
class QWidget;

namespace look {

/// The dynamic property of a window that overrides the factor of its size; a double.
constexpr const char* scaleProperty = "lookScale";

/// By what all lengths and sizes of type grow: 1 in small windows, 1.125 from 1600x1000, 1.5 from 2240x1300.
double factorFor(const QSize& window);
/// The same of the window in which this widget is, or its property `lookScale` where it is above 0.
double factorFor(const QWidget& widget);

/// The factor in force, 1 at first. Package and panel have one each and set it when their window gets
/// another size; style sheets and fonts made before keep theirs and are to be made anew.
double factor();
void setFactor(double factor);

/// A length of the look's grid, given in px at factor 1, in px of now.
int px(int length);

}  // namespace look
