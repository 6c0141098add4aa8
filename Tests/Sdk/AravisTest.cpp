// What the SDK does behind Aravis' back, and what would have to change if another Aravis were made differently.

#include "Base/Failure.h"
#include "Nodes/NodeMap.h"
#include "SdkFixture.h"
#include "WordMemory.h"

using namespace OPX::KltAPI;

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
            return std::to_string(long(value));
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
    WordMemory::Log log;
    const ObjectPtr<ArvDevice> device = NewRegisterDevice(std::make_unique<WordMemory>(log), DeviceKind::Plain);
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
        WordMemory::Log log;
        testing::internal::CaptureStderr();
        const auto before = Count("/proc/self/task") + Count("/proc/self/fd");
        ObjectPtr<ArvDevice> device = NewRegisterDevice(std::make_unique<WordMemory>(log), kind);
        EXPECT_EQ(ARV_IS_GV_DEVICE(device.get()) != FALSE, isGigE);
        EXPECT_TRUE(g_initable_init(G_INITABLE(device.get()), nullptr, nullptr)) << "somebody looked for a camera";
        EXPECT_EQ(Ask(NewNodeMap(device.get(), description), "R"), isGigE ? "we" : std::to_string(0xFFFFFFFF));
        EXPECT_EQ(Count("/proc/self/task") + Count("/proc/self/fd"), before);
        device.reset();
        EXPECT_TRUE(log.ended);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    }
}
