#ifndef KOV_ANIMATION_DB_FIXTURE_H
#define KOV_ANIMATION_DB_FIXTURE_H

#include "kovDbFixture.h"

#include "db/kovDbAnimation.h"
#include "db/kovDbTempBlockReference.h"

// Tests of the animation's database classes: the platform's classes, then
// the module's own, registered for each test as the module registers them.
using kovAnimationDbFixture = kovDbFixtureWith<kovDbTempBlockReference, kovDbAnimation>;

#endif
