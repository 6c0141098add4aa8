#include "System/CameraList.h"

#include "Camera/Impls.h"

#include <set>

namespace OPX::KltAPI
{

CameraList::Changes CameraList::Update(const Transport& transport, const std::vector<CameraRecord>& found)
{
    Changes changes;
    const std::lock_guard<std::mutex> lock(m_mutex);
    RemoveMissing(transport, found, changes);
    AddNew(transport, found, changes);
    return changes;
}

void CameraList::RemoveMissing(const Transport& transport, const std::vector<CameraRecord>& found, Changes& changes)
{
    std::set<std::string> ids;
    for (const CameraRecord& record : found)
        ids.insert(record.id);
    std::vector<Known> kept;
    for (Known& known : m_known)
    {
        if (known.transport == &transport)
            known.misses = ids.count(known.id) != 0 ? 0 : known.misses + 1;
        if (known.transport == &transport && known.misses > transport.ToleratedMisses())
            changes.emplace_back(known.camera, UpdateTriggerCameraLeft);
        else
            kept.push_back(known);
    }
    m_known.swap(kept);
}

void CameraList::AddNew(const Transport& transport, const std::vector<CameraRecord>& found, Changes& changes)
{
    std::set<std::pair<const Transport*, std::string>> there;
    for (const Known& known : m_known)
        there.emplace(known.transport, known.id);
    for (const CameraRecord& record : found)
    {
        if (!there.emplace(&transport, record.id).second)
            continue;
        const CameraPtr camera = NewCamera(record);
        m_known.push_back({&transport, record.id, camera, 0});
        changes.emplace_back(camera, UpdateTriggerCameraArrived);
    }
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
