#include "editor/kovSubTrackClipboard.h"

kovSubTrackClipboard& kovSubTrackClipboard::instance()
{
  static kovSubTrackClipboard clipboard;
  return clipboard;
}

void kovSubTrackClipboard::copy(const kovAnimationItem& item)
{
  m_filled = true;
  m_type = item.animationType();
  m_values = item.values();
}

void kovSubTrackClipboard::clear()
{
  m_filled = false;
  m_values.clear();
}
