#include "host/render/OdGsModel.h"

#include "host/render/kovGsPosedDraw.h"
#include "host/render/kovOcctConvert.h"
#include "host/render/kovRenderLog.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbEntity.h"
#include "Db/OdDbObjectIterator.h"
#include "Gi/OdGiWorldDrawRecorder.h"

OdGsModel::OdGsModel(const Handle(AIS_InteractiveContext)& context)
  : m_context(context)
  , m_highlightStyle(new Prs3d_Drawer())
{
  m_highlightStyle->SetMethod(Aspect_TOHM_COLOR);
  m_highlightStyle->SetColor(Quantity_Color(1.0, 0.78, 0.16, Quantity_TOC_sRGB));
  m_highlightStyle->SetDisplayMode(-1);
}

OdGsModel::~OdGsModel()
{
  setDatabase(nullptr);
}

void OdGsModel::setDatabase(OdDbDatabase* db)
{
  if (m_db == db)
    return;
  if (m_db)
    m_db->removeReactor(this);
  clear();
  m_db = db;
  if (!m_db)
    return;
  m_db->addReactor(this);
  m_modelSpace = m_db->getModelSpaceId();
  m_allDirty = true;
}

void OdGsModel::clear()
{
  for (const auto& shown : m_shown)
    m_context->Remove(shown.second, false);
  m_shown.clear();
  m_lights.clear();
  m_dirty.clear();
  m_subjects.clear();
  m_baked.clear();
  m_hidden.clear();
  m_allDirty = false;
  m_modelSpace.setNull();
  ++m_revision;
}

void OdGsModel::invalidate(const OdDbObjectId& id)
{
  if (id.isNull())
    m_allDirty = true;
  else
    m_dirty.insert(id);
}

bool OdGsModel::update()
{
  if (!m_db || (!m_allDirty && m_dirty.empty()))
    return false;
  if (m_allDirty) {
    m_allDirty = false;
    m_dirty.clear();
    std::set<OdDbObjectId> stale;
    for (const auto& shown : m_shown)
      stale.insert(shown.first);
    for (const auto& light : m_lights)
      stale.insert(light.first);
    OdDbBlockTableRecordPtr space = OdDbBlockTableRecord::cast(m_modelSpace.openObject().get());
    for (OdDbObjectIteratorPtr it = space.isNull() ? OdDbObjectIteratorPtr() : space->newIterator();
         !it.isNull() && !it->done(); it->step()) {
      stale.erase(it->objectId());
      vectorize(it->objectId());
    }
    for (const OdDbObjectId& id : stale)
      remove(id);
  } else {
    const std::set<OdDbObjectId> dirty = std::move(m_dirty);
    m_dirty.clear();
    for (const OdDbObjectId& id : dirty)
      vectorize(id);
  }
  ++m_revision;
  return true;
}

void OdGsModel::vectorize(const OdDbObjectId& id)
{
  OdDbObjectPtr object = id.openObject(OdDb::kForRead);
  OdDbEntityPtr entity = OdDbEntity::cast(object.get());
  if (entity.isNull() || entity->ownerId() != m_modelSpace) {
    remove(id);
    return;
  }
  if (OdDbLight* light = OdDbLight::cast(entity.get()).get()) {
    remove(id);
    if (light->isOn() && entity->visibility() == OdDb::kVisible)
      m_lights[id] = Light { light->lightType(), light->position(), light->targetLocation(), light->intensity() };
    return;
  }
  if (m_hidden.count(id)) {
    remove(id);
    return;
  }
  OdGiWorldDrawRecorder recorder;
  const auto subject = m_subjects.find(id);
  const bool baked = subject != m_subjects.end() && m_baked.count(id);
  if (baked)
    recorder.pushModelTransform(subject->second.transform);
  // One entity that cannot draw must not take the rest of the scene with it.
  try {
    if (baked)
      kovGsDrawPosed(*entity, recorder, subject->second.nodes);
    else
      entity->worldDraw(&recorder);
  } catch (const OdError& error) {
    qCWarning(lcRender) << "entity" << odToQString(id.getHandle().ascii())
                        << "failed to draw:" << odToQString(error.description());
  }
  if (recorder.records().empty()) {
    remove(id);
    return;
  }
  Handle(kovGsPresentation) presentation = new kovGsPresentation(id, recorder.records());
  auto shown = m_shown.find(id);
  if (shown != m_shown.end()) {
    m_context->Remove(shown->second, false);
    shown->second = presentation;
  } else {
    m_shown.emplace(id, presentation);
  }
  m_context->Display(presentation, m_mode, 0, false);
  place(id);
  applyHighlight(id, presentation);
}

void OdGsModel::remove(const OdDbObjectId& id)
{
  const auto shown = m_shown.find(id);
  if (shown != m_shown.end()) {
    m_context->Remove(shown->second, false);
    m_shown.erase(shown);
  }
  m_lights.erase(id);
}

void OdGsModel::place(const OdDbObjectId& id)
{
  const auto shown = m_shown.find(id);
  if (shown == m_shown.end())
    return;
  const auto subject = m_subjects.find(id);
  gp_Trsf trsf;
  if (subject == m_subjects.end() || m_baked.count(id))
    m_context->SetLocation(shown->second, TopLoc_Location());
  else if (kovOcct::similarity(subject->second.transform, trsf))
    m_context->SetLocation(shown->second, TopLoc_Location(trsf));
}

void OdGsModel::setHighlighted(const std::set<OdDbObjectId>& ids)
{
  if (ids == m_highlighted)
    return;
  m_highlighted = ids;
  for (const auto& shown : m_shown)
    applyHighlight(shown.first, shown.second);
}

void OdGsModel::applyHighlight(const OdDbObjectId& id, const Handle(kovGsPresentation)& presentation)
{
  if (m_highlighted.count(id))
    m_context->HilightWithColor(presentation, m_highlightStyle, false);
  else
    m_context->Unhilight(presentation, false);
}

void OdGsModel::setSubjects(const std::vector<IkovAnimatedScene::Subject>& subjects,
                            const std::vector<OdDbObjectId>& hidden)
{
  std::map<OdDbObjectId, const IkovAnimatedScene::Subject*> now;
  for (const IkovAnimatedScene::Subject& subject : subjects)
    now[subject.entity] = &subject;
  std::set<OdDbObjectId> touched;
  for (const auto& old : m_subjects)
    touched.insert(old.first);
  for (const auto& subject : now)
    touched.insert(subject.first);
  for (const OdDbObjectId& id : touched) {
    const auto subject = now.find(id);
    setSubject(id, subject == now.end() ? nullptr : subject->second);
  }
  const std::set<OdDbObjectId> nowHidden(hidden.begin(), hidden.end());
  if (nowHidden != m_hidden) {
    for (const OdDbObjectId& id : m_hidden)
      m_dirty.insert(id);
    for (const OdDbObjectId& id : nowHidden)
      m_dirty.insert(id);
    m_hidden = nowHidden;
    ++m_revision;
  }
}

void OdGsModel::setSubject(const OdDbObjectId& id, const IkovAnimatedScene::Subject* subject)
{
  const auto was = m_subjects.find(id);
  if (was != m_subjects.end() && subject && was->second.transform == subject->transform
      && was->second.nodes == subject->nodes)
    return;
  gp_Trsf trsf;
  const bool bakedBefore = m_baked.erase(id) > 0;
  const bool bakeNow = subject && (!subject->nodes.isEmpty() || !kovOcct::similarity(subject->transform, trsf));
  if (subject)
    m_subjects[id] = *subject;
  else
    m_subjects.erase(id);
  if (bakeNow)
    m_baked.insert(id);
  if (bakeNow || bakedBefore)
    m_dirty.insert(id);
  else
    place(id);
  ++m_revision;
}

void OdGsModel::setDisplayMode(kovGsPresentation::DisplayMode mode)
{
  if (mode == m_mode)
    return;
  m_mode = mode;
  for (const auto& shown : m_shown)
    m_context->SetDisplayMode(shown.second, mode, false);
  ++m_revision;
}

OdDbObjectId OdGsModel::entityOf(const Handle(AIS_InteractiveObject)& object) const
{
  Handle(kovGsPresentation) presentation = Handle(kovGsPresentation)::DownCast(object);
  return presentation.IsNull() ? OdDbObjectId() : presentation->entityId();
}

Bnd_Box OdGsModel::extents() const
{
  Bnd_Box box;
  for (const auto& shown : m_shown) {
    Bnd_Box own = shown.second->worldBox();
    if (!own.IsVoid())
      box.Add(own.Transformed(shown.second->LocalTransformation()));
  }
  return box;
}

size_t OdGsModel::triangleCount() const
{
  size_t count = 0;
  for (const auto& shown : m_shown)
    count += shown.second->triangleCount();
  return count;
}

std::vector<OdGsModel::Light> OdGsModel::lights() const
{
  std::vector<Light> out;
  for (const auto& light : m_lights)
    out.push_back(light.second);
  return out;
}

void OdGsModel::changed(const OdDbObject* object)
{
  if (!object)
    return;
  if (object->ownerId() == m_modelSpace)
    m_dirty.insert(object->objectId());
  else if (OdDbEntity::cast(object).get())
    m_allDirty = true;
}

void OdGsModel::objectAppended(const OdDbDatabase*, const OdDbObject* pDbObj)
{
  changed(pDbObj);
}

void OdGsModel::objectModified(const OdDbDatabase*, const OdDbObject* pDbObj)
{
  changed(pDbObj);
}

void OdGsModel::objectErased(const OdDbDatabase*, const OdDbObject* pDbObj, bool)
{
  changed(pDbObj);
}

void OdGsModel::goodbye(const OdDbDatabase* pDb)
{
  if (pDb == m_db) {
    clear();
    m_db = nullptr;
  }
}
