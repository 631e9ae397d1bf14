#pragma once

/// The measures of the panel's frame, in px, for a width of its window and the factor in force. They lie on
/// the look's grid of 8.
namespace app::framegrid {

int headerHeight();
int statusHeight();
/// The rail at the right; the package's own column of pages at the left is as wide.
int railWidth(int window);
int stateWidth(int window);
/// Path, signals, handbook.
int wideDock(int window);
/// Whether the window is one of 1024 px, whatever its factor.
bool isNarrow(int window);

}  // namespace app::framegrid
