#ifndef OD_GS_MODEL_H
#define OD_GS_MODEL_H

#include "host/render/kovGsPresentation.h"

#include "host/api/IkovAnimatedScene.h"

#include "Db/OdDbDatabaseReactor.h"
#include "Db/OdDbLight.h"
#include "Db/OdDbObjectId.h"
#include "Ge/OdGeMatrix3d.h"

#include <AIS_InteractiveContext.hxx>
#include <Bnd_Box.hxx>

#include <map>
#include <set>

class OdDbDatabase;

// The render engine's copy of a drawing's model space: one presentation per
// entity, made from what the entity's worldDraw draws. It listens to the
// database and, on update(), vectorizes again only the entities appended,
// modified or erased since; a change inside a block definition redraws the
// entities of model space, since any of them may show the block.
//
// Animated subjects are placed from outside (setSubjects): a rigid motion with
// uniform scale moves the presentation as it is; any other transform, or a
// pose of the block's nodes, vectorizes the entity again through it.
class OdGsModel : public OdDbDatabaseReactor {
public:
  struct Light {
    OdDbLight::LightType type = OdDbLight::kPointLight;
    OdGePoint3d position;
    OdGePoint3d target;
    double intensity = 1.0;
  };

  explicit OdGsModel(const Handle(AIS_InteractiveContext)& context);
  ~OdGsModel() override;
  OdGsModel(const OdGsModel&) = delete;
  OdGsModel& operator=(const OdGsModel&) = delete;

  // Shows db's model space (nothing for null); the previous drawing goes.
  void setDatabase(OdDbDatabase* db);
  OdDbDatabase* database() const { return m_db; }

  // Vectorizes what changed. True when the scene changed.
  bool update();
  // Marks an entity (every entity for a null id) to be vectorized again.
  void invalidate(const OdDbObjectId& id);

  void setDisplayMode(kovGsPresentation::DisplayMode mode);
  kovGsPresentation::DisplayMode displayMode() const { return m_mode; }

  // Draws these entities in the highlight colour and the others as they are.
  // The highlight is no change of what is shown: it leaves revision() alone.
  void setHighlighted(const std::set<OdDbObjectId>& ids);

  // Where the animated subjects stand now and which entities the animation
  // hides; entities not named stand as drawn.
  void setSubjects(const std::vector<IkovAnimatedScene::Subject>& subjects,
                   const std::vector<OdDbObjectId>& hidden = {});

  // The entity a presentation shows; null for any other object.
  OdDbObjectId entityOf(const Handle(AIS_InteractiveObject)& object) const;
  // The box around everything shown, as placed; void when nothing is.
  Bnd_Box extents() const;
  size_t entityCount() const { return m_shown.size(); }
  size_t triangleCount() const;
  // The lights that are on.
  std::vector<Light> lights() const;
  // Counts every change of what is shown, so that an accumulating engine
  // knows to start again.
  unsigned revision() const { return m_revision; }

  void objectAppended(const OdDbDatabase* pDb, const OdDbObject* pDbObj) override;
  void objectModified(const OdDbDatabase* pDb, const OdDbObject* pDbObj) override;
  void objectErased(const OdDbDatabase* pDb, const OdDbObject* pDbObj, bool pErased) override;
  void goodbye(const OdDbDatabase* pDb) override;

  // Reference counting does not own a model: its owner does.
  void addRef() override {}
  void release() override {}

private:
  void changed(const OdDbObject* object);
  void vectorize(const OdDbObjectId& id);
  void remove(const OdDbObjectId& id);
  void place(const OdDbObjectId& id);
  void setSubject(const OdDbObjectId& id, const IkovAnimatedScene::Subject* subject);
  void applyHighlight(const OdDbObjectId& id, const Handle(kovGsPresentation)& presentation);
  void clear();

  Handle(AIS_InteractiveContext) m_context;
  OdDbDatabase* m_db = nullptr;
  OdDbObjectId m_modelSpace;
  std::map<OdDbObjectId, Handle(kovGsPresentation)> m_shown;
  std::map<OdDbObjectId, Light> m_lights;
  std::set<OdDbObjectId> m_dirty;
  bool m_allDirty = false;
  std::map<OdDbObjectId, IkovAnimatedScene::Subject> m_subjects;
  // Subjects whose pose could not move the presentation: drawn through it.
  std::set<OdDbObjectId> m_baked;
  std::set<OdDbObjectId> m_hidden;
  std::set<OdDbObjectId> m_highlighted;
  Handle(Prs3d_Drawer) m_highlightStyle;
  kovGsPresentation::DisplayMode m_mode = kovGsPresentation::Shaded;
  unsigned m_revision = 0;
};

#endif
