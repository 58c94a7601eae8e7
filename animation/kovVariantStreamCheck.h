#ifndef KOV_VARIANT_STREAM_CHECK_H
#define KOV_VARIANT_STREAM_CHECK_H

#include <QByteArray>

// Checks that bytes are one whole variant as QDataStream (its default
// version) writes it, before QDataStream is let loose on them.
//
// QDataStream sizes containers and texts from the counts it reads, so a
// damaged count would ask for gigabytes; the check walks the bytes first and
// holds every count and length against the bytes that are left. It knows the
// QtCore types that QDataStream streams, except those whose bytes cannot be
// trusted at all (an easing curve files a function address) and user types
// (their layout is their owner's). CBOR payloads are walked item by item,
// because the CBOR decoder reserves room for a container by its declared
// size.
class kovVariantStreamCheck {
public:
  // Variant lists, maps and hashes, and CBOR containers, nest at most this deep.
  static constexpr int kMaxDepth = 8;
  static constexpr int kMaxCborDepth = 64;

  // True when the type's values can be told whole or damaged by their bytes.
  static bool knowsType(int typeId);
  // True for the types whose bytes are a fixed number of plain numbers.
  static bool hasFixedSize(int typeId);
  // True when bytes hold exactly one whole variant of a known type.
  static bool isWholeVariant(const QByteArray& bytes);
};

#endif
