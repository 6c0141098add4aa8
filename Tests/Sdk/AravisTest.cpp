// What the SDK does behind Aravis' back, and what would have to change if another Aravis were made differently.

#include "Base/Failure.h"
#include "Nodes/NodeMap.h"
#include "SdkFixture.h"
#include "Transport/RegisterDevice.h"
#include "Transport/SparseMemory.h"

using namespace OPX::KltAPI;

namespace
{

/// Tells how it is asked.
class Witness : public RegisterAccess
{
public:
    explicit Witness(std::string& told) : m_told(told) {}
    ~Witness() override { m_told += "end"; }

    Failure ReadMemory(std::uint64_t, std::uint32_t size, std::uint8_t* buffer) override
    {
        m_told += "memory ";
        std::fill_n(buffer, size, 1);
        return KltErrorSuccess;
    }
    Failure ReadRegister(std::uint64_t, std::uint32_t&) override
    {
        m_told += "register ";
        return KltErrorIncomplete;
    }
    Failure WriteMemory(std::uint64_t, std::uint32_t, const std::uint8_t*) override { return KltErrorSuccess; }
    Failure WriteRegister(std::uint64_t, std::uint32_t) override { return KltErrorSuccess; }

private:
    std::string& m_told;
};

} // namespace

class Aravis : public SdkTest
{
protected:
    static auto Count(const char* folder)
    {
        return std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator());
    }

    /// The value of a node, or who fails to read it.
    static std::string Ask(const ObjectPtr<ArvGc>& nodeMap, const std::string& name)
    {
        ArvGcNode* node = arv_gc_get_node(nodeMap.get(), name.c_str());
        CallError error;
        const double value = ARV_IS_GC_FLOAT(node)
                                 ? arv_gc_float_get_value(ARV_GC_FLOAT(node), error.Out())
                                 : double(arv_gc_integer_get_value(ARV_GC_INTEGER(node), error.Out()));
        if (error.Get() == nullptr)
            return std::to_string(int(value));
        return error.Get()->domain == OwnErrorDomain() ? "we" : "Aravis";
    }
};

TEST_F(Aravis, EvaluatesTheFormulasOfItsOwnNodeMapsAndWeThoseOfOurs)
{
    const std::string kinds[] = {"SwissKnife", "IntSwissKnife", "Converter", "IntConverter"};
    std::string nodes = "<Integer Name='V'><Value>3</Value></Integer>";
    for (const std::string& kind : kinds)
        for (const std::string formula : {"3 + 4", "NOTHING"})
            nodes += "<" + kind + " Name='" + kind + formula[0] + "'><Formula>" + formula + "</Formula><FormulaTo>" +
                     formula + "</FormulaTo><FormulaFrom>" + formula + "</FormulaFrom><pValue>V</pValue></" + kind +
                     ">";
    const SafeDescription description = CheckDescription(Description({}, nodes), std::string());
    const ObjectPtr<ArvDevice> device = NewRegisterDevice(std::make_unique<SparseMemory>(), DeviceKind::Plain);
    const ObjectPtr<ArvGc> ours = NewNodeMap(device.get(), description);
    const ObjectPtr<ArvGc> other(arv_gc_new(device.get(), description.xml.data(), description.xml.size()));
    for (const std::string& kind : kinds)
    {
        SCOPED_TRACE(kind);
        EXPECT_EQ(Ask(ours, kind + "3") + Ask(other, kind + "3"), "77");
        EXPECT_EQ(Ask(ours, kind + "N"), "we");
        EXPECT_NE(Ask(other, kind + "N"), "we");
    }
}

TEST_F(Aravis, TakesOurDeviceForOneOfItsOwnAndRunsNoneOfTheirCode)
{
    std::string xml =
        Description({}, "<IntReg Name='R'><Address>0</Address><Length>4</Length><pPort>Device</pPort></IntReg>");
    xml.replace(xml.find("SchemaMinorVersion='1'"), 22, "SchemaMinorVersion='0'");
    const SafeDescription description = CheckDescription(xml, std::string());
    for (const DeviceKind kind : {DeviceKind::Plain, DeviceKind::GigEVision})
    {
        const bool isGigE = kind == DeviceKind::GigEVision;
        std::string told;
        testing::internal::CaptureStderr();
        const auto before = Count("/proc/self/task") + Count("/proc/self/fd");
        ObjectPtr<ArvDevice> device = NewRegisterDevice(std::make_unique<Witness>(told), kind);
        EXPECT_EQ(ARV_IS_GV_DEVICE(device.get()) != FALSE, isGigE);
        EXPECT_TRUE(g_initable_init(G_INITABLE(device.get()), nullptr, nullptr)) << "somebody looked for a camera";
        EXPECT_EQ(Ask(NewNodeMap(device.get(), description), "R"), isGigE ? "we" : "16843009");
        EXPECT_EQ(Count("/proc/self/task") + Count("/proc/self/fd"), before);
        device.reset();
        EXPECT_EQ(told, isGigE ? "register end" : "memory end");
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    }
}
