#ifndef KOV_CHECKS_H
#define KOV_CHECKS_H

// Checks the tests share: the code of the error an action raises, and points
// and vectors that agree within a tolerance.
#include "Ge/OdGePoint3d.h"
#include "Rx/OdError.h"

#include <gtest/gtest.h>

// The error the action raises; eOk when it raises nothing.
template <class Action>
OdError raisedError(Action action)
{
  try {
    action();
  } catch (const OdError& error) {
    return error;
  }
  return OdError(eOk);
}

template <class Action>
OdResult raisedCode(Action action)
{
  return raisedError(action).code();
}

inline void expectPointNear(const OdGePoint3d& actual, const OdGePoint3d& expected, double tol = 1e-9)
{
  EXPECT_NEAR(actual.x, expected.x, tol);
  EXPECT_NEAR(actual.y, expected.y, tol);
  EXPECT_NEAR(actual.z, expected.z, tol);
}

inline void expectVectorNear(const OdGeVector3d& actual, const OdGeVector3d& expected, double tol = 1e-9)
{
  expectPointNear(OdGePoint3d::kOrigin + actual, OdGePoint3d::kOrigin + expected, tol);
}

#endif
