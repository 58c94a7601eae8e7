#ifndef KOV_PRODUCTION_CHOICES_H
#define KOV_PRODUCTION_CHOICES_H

// The production choices of a camera cut. Drawings keep them as the integers
// given here, so the values are part of the file format: never renumber them.
// A drawing may hold a value outside a list; the enums have an int underneath
// so that such a value is kept as it is.

enum class kovEncoding : int {
  H264 = 0,
  H265 = 1,
  Mjpeg = 2,
  Uncompressed = 3,
  Flv = 4,
  Quicktime = 5,
  XVid = 6,
};

enum class kovOutputFormat : int {
  Jpg = 0,
  Png = 1,
  Hdr = 2,
  Avi = 3,
  Mp4 = 4,
  Mov = 5,
  Flv = 6,
  Mkv = 7,
  JpegSequence = 8,
  PngSequence = 9,
};

enum class kovQuality : int {
  Low = 0,
  Medium = 1,
  High = 2,
  Extreme = 3,
};

// Jpg, Png and Hdr: one picture.
constexpr bool kovIsStillImageFormat(kovOutputFormat format)
{
  return format >= kovOutputFormat::Jpg && format <= kovOutputFormat::Hdr;
}

// Avi to Mkv: frames that ffmpeg makes into one clip.
constexpr bool kovIsVideoClipFormat(kovOutputFormat format)
{
  return format >= kovOutputFormat::Avi && format <= kovOutputFormat::Mkv;
}

// The frames themselves are the product.
constexpr bool kovIsImageSequenceFormat(kovOutputFormat format)
{
  return format == kovOutputFormat::JpegSequence || format == kovOutputFormat::PngSequence;
}

#endif
