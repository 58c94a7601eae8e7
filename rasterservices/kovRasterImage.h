#ifndef KOV_RASTER_IMAGE_H
#define KOV_RASTER_IMAGE_H

#include "Gi/OdGiRasterImage.h"

#include <QImage>

// The platform's raster image and Qt's, pixel for pixel (alpha kept).
OdGiRasterImagePtr kovRasterImageFromQImage(const QImage& image);
QImage kovRasterImageToQImage(const OdGiRasterImage& image);

#endif
