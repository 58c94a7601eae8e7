#ifndef KOV_HOST_SERVICES_H
#define KOV_HOST_SERVICES_H

class kovHostAppProps;
class kovHostConsole;
class kovHostEntityLibrary;
class kovHostPhysicsRender;
class kovHostPropSystem;
class kovHostSelectionSet;
class kovHostViewSystem;

// The services the host offers the module, registered by id in the system
// registry for the life of this object.
class kovHostServices {
public:
  kovHostServices();
  ~kovHostServices();
  kovHostServices(const kovHostServices&) = delete;
  kovHostServices& operator=(const kovHostServices&) = delete;

  kovHostViewSystem* viewSystem() const { return m_viewSystem; }
  kovHostConsole* console() const { return m_console; }
  kovHostPropSystem* propSystem() const { return m_propSystem; }
  kovHostPhysicsRender* physicsRender() const { return m_physicsRender; }
  kovHostSelectionSet* selectionSet() const { return m_selectionSet; }

private:
  kovHostViewSystem* m_viewSystem;
  kovHostConsole* m_console;
  kovHostPropSystem* m_propSystem;
  kovHostAppProps* m_appProps;
  kovHostEntityLibrary* m_entityLibrary;
  kovHostPhysicsRender* m_physicsRender;
  kovHostSelectionSet* m_selectionSet;
};

#endif
