#ifndef KOV_KEYFRAME_CODEC_H
#define KOV_KEYFRAME_CODEC_H

#include "animation/kovVariantStreamCheck.h"

#include <QByteArray>
#include <QString>
#include <QVariant>

// The bytes of one keyframe value: the variant as QDataStream writes it with
// its default version (type id, null flag, data).
//
// Whatever encode writes for a value that whyNotStorable accepts, decode reads
// back equal, and whatever decode reads, whyNotStorable accepts: the model
// refuses other values when they are set, so a drawing that saves always
// opens, and one that opens saves again. Decoding never
// trusts the bytes: kovVariantStreamCheck walks them, checking every count and
// length, before anything is allocated for them.
class kovKeyframeCodec {
public:
  static constexpr int kMaxDepth = kovVariantStreamCheck::kMaxDepth;

  static QByteArray encode(const QVariant& value);
  // False (value untouched) when the bytes are not one whole, known value.
  static bool decode(const QByteArray& bytes, QVariant& value);
  // Why a keyframe can't hold value, in words for the user; empty when it can.
  static QString whyNotStorable(const QVariant& value);
};

#endif
