#ifndef KOV_KEYFRAME_CODEC_H
#define KOV_KEYFRAME_CODEC_H

#include <QByteArray>
#include <QVariant>

// The bytes of one keyframe value: the variant as QDataStream writes it with
// its default version (type id, null flag, data).
//
// Decoding never trusts the bytes. QDataStream reserves room for a list's
// element count before reading the elements, so a damaged count would ask for
// gigabytes; the bytes are therefore walked first, accepting only the value
// kinds keyframes hold (numbers, booleans, texts, byte arrays, and lists of
// them, nested at most kMaxDepth deep) with every count and length checked
// against the bytes that are left.
class kovKeyframeCodec {
public:
  static constexpr int kMaxDepth = 8;

  static QByteArray encode(const QVariant& value);
  // False (value untouched) when the bytes are not a whole, acceptable value.
  static bool decode(const QByteArray& bytes, QVariant& value);
};

#endif
