// In-house, no part of the face.

#ifndef NYXMLKIT_GUARD_DETAIL_NYXMLPLUGINGATE_H
#define NYXMLKIT_GUARD_DETAIL_NYXMLPLUGINGATE_H

class NyXmlGuardState;

/// Asks the guards of a thread's readers before a plug-in is loaded on it, and then whoever was asked before.
///
/// The loader has one gate for the process. Ours looks at the calling thread's guards, so that other threads are not disturbed, and it
/// is put in front again whenever an application has set its own in the meantime.
namespace NyXmlPlugInGate {

void enter(NyXmlGuardState& guard);
void leave(NyXmlGuardState& guard) noexcept;

} // namespace NyXmlPlugInGate

#endif
