#ifndef KOV_GLTF_GUARD_H
#define KOV_GLTF_GUARD_H

#include <QString>

// Looks at a glTF or GLB file before a reader trusts it: the binary container's
// lengths and every buffer's declared size are checked against the bytes that
// are really there, so a truncated file or one claiming gigabytes is refused
// (OdError) before anything is allocated for it.
class kovGltfGuard {
public:
  struct Summary {
    bool animated = false;
  };
  static Summary check(const QString& path);
};

#endif
