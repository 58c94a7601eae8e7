#ifndef KOV_HOST_CLASSES_H
#define KOV_HOST_CLASSES_H

// Registers the host's own database classes (the scene's polygon meshes and block animations) for
// the host's lifetime, after the platform's and before any drawing is opened.
class kovHostClasses {
public:
  kovHostClasses();
  ~kovHostClasses();
  kovHostClasses(const kovHostClasses&) = delete;
  kovHostClasses& operator=(const kovHostClasses&) = delete;
};

#endif
