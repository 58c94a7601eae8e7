#ifndef KOV_ANIMATION_LISTING_H
#define KOV_ANIMATION_LISTING_H

#include <QStringList>

class OdEdCommandContext;
class kovDbAnimation;

// What an animation holds, as lines of text: its tracks with their
// sub-tracks and keyframes (times on the animation's clock, values as the
// keyframes' tool tips show them) and its camera cuts with their settings.
namespace kovAnimationListing {

QStringList describe(const kovDbAnimation& animation);
// animationlist: the editing animation, on the command line.
void list(OdEdCommandContext* pCmdCtx);

} // namespace kovAnimationListing

#endif
