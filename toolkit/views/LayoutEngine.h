// Solves the constraints of one view's direct subviews.
//
// Unknown   start and size per axis of each subview that does not translate its autoresizing mask; all else is constant:
//           the view itself, other subviews, views further down or aside (as their frames stand).
// Order     constraints by priority, then natural sizes, then the size, then the place that the frame has. An equation
//           that contradicts those before it is left out; of a required one a log line is written, once.
// Space     both axes count from the leading corner of the picture: left to right, top to bottom, flipped or not.
#pragma once

class NSView;

class LayoutEngine {
public:
    static void solve(NSView &parent);
    // True where the constraints and natural sizes leave some subview's place to its old frame.
    [[nodiscard]] static bool isAmbiguous(NSView &parent);
};
