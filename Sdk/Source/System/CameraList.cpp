#include "System/CameraList.h"

#include "Camera/Impls.h"

#include <set>

namespace OPX::KltAPI
{

CameraList::Changes CameraList::Update(const Transport& transport, const std::vector<CameraRecord>& found)
{
    Changes changes;
    std::set<std::string> ids;
    for (const CameraRecord& record : found)
        ids.insert(record.id);
    std::vector<Known> kept;
    // Nobody else changes them, so no lock is needed: looking at a session can take as long as a file system does.
    for (Known known : m_known)
    {
        if (known.transport != &transport)
        {
            kept.push_back(known);
            continue;
        }
        known.misses = ids.erase(known.id) != 0 ? 0 : known.misses + 1;
        const bool isMissing = known.misses > transport.ToleratedMisses();
        const Session::Life life = FeatureContainer::Impl::Of(*known.camera).session->Look();
        if (life == Session::Life::HasJustEnded)
            changes.emplace_back(known.camera, UpdateTriggerOpenStateChanged);
        if (isMissing && life != Session::Life::GoesOn)
            changes.emplace_back(known.camera, UpdateTriggerCameraLeft);
        else
            kept.push_back(known);
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_known.swap(kept);
    for (const CameraRecord& record : found)
    {
        if (ids.erase(record.id) == 0) // Known, or a second record of the same camera.
            continue;
        m_known.push_back({&transport, record.id, NewCamera(record), 0});
        changes.emplace_back(m_known.back().camera, UpdateTriggerCameraArrived);
    }
    return changes;
}

CameraPtrVector CameraList::Cameras() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    CameraPtrVector cameras;
    for (const Known& known : m_known)
        cameras.push_back(known.camera);
    return cameras;
}

void CameraList::Clear()
{
    std::vector<Known> released;
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_known.swap(released);
}

} // namespace OPX::KltAPI
