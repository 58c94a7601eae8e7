#ifndef OD_ED_H
#define OD_ED_H

// Options of the user input calls (OdEdUserIO).
namespace OdEd {

// getPoint options. The drawing-related ones are hints for an interactive
// host; input from a script ignores them.
enum GetPointOptions {
  kGptDefault = 0,
  kGptNoLimCheck = 1,   // accept points outside the drawing limits
  kGptNoUCS = 2,        // take the point in world coordinates
  kGptRectFrame = 4,    // show a rectangle from the base point while dragging
  kGptRubberBand = 8,   // show a line from the base point while dragging
  kGptNoOSnap = 16,     // no object snap
  kGptBeginDrag = 32,
  kGptEndDrag = 64
};

// Options of getString, getReal, getInt and getKeyword.
enum CommonInputOptions {
  kInpDefault = 0,
  // Empty input raises OdEdEmptyInput instead of giving the default value.
  kInpThrowEmpty = 1,
  // getReal, getInt: zero is refused.
  kInpNonZero = 2,
  // getReal, getInt: negative values are refused.
  kInpNonNeg = 4
};

// select options.
enum SelectOptions {
  kSelDefault = 0,
  // One object ends the selection, without an empty answer.
  kSelSingleEntity = 1
};

} // namespace OdEd

#endif
