#include "CameraObserver.h"
#include "FeatureInfos.h"
#include "KoltaHelper.h"
#include "SdkReads.h"
#include "TestData.h"

#include <QSignalSpy>
#include <QtTest>

#include <algorithm>
#include <climits>

using namespace OPX::KltAPI;
using namespace TestData;
using ScriptedSdk::First;
using ScriptedSdk::Second;
using ScriptedSdk::TheScript;

namespace
{

QStringList NamesIn(const std::vector<FeaturePtr>& features)
{
    QStringList names;
    for (const FeaturePtr& feature : features)
    {
        std::string name;
        ReadString(*feature, &Feature::GetName, name);
        names.append(QString::fromStdString(name));
    }
    return names;
}

/// What sorting with a comparison that is always false does to a list, step by step.
void Permute(QStringList& list, int first, int last)
{
    while (last - first > 16)
    {
        const int count = last - first;
        std::swap(list[first], list[first + count / 2]);
        std::reverse(list.begin() + first + 1, list.begin() + last);
        const int cut = first + 1 + (count - 1) / 2;
        Permute(list, cut, last);
        last = cut;
    }
}

KltErrorType ReadFrom(const ScriptedSdk::CameraData& data, std::string& text)
{
    const CameraPtr camera = ScriptedSdk::MakeCamera(data);
    return ReadString(*camera, &Camera::GetName, text) ? 0 : 1;
}

} // namespace

class CatalogueTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { ScriptedSdk::Reset(); }

    void FeaturesOfOneCategoryKeepTheOrderThatClassesAlwaysHad_data()
    {
        QTest::addColumn<int>("count");
        for (int count : {0, 1, 2, 16, 17, 20, 33, 100})
            QTest::newRow(QByteArray::number(count).constData()) << count;
    }

    void FeaturesOfOneCategoryKeepTheOrderThatClassesAlwaysHad()
    {
        QFETCH(int, count);
        std::vector<ScriptedSdk::FeatureData> features;
        QStringList expected;
        for (int i = 0; i < count; ++i)
        {
            features.push_back(MakeFeature("f" + std::to_string(i), KltFeatureDataInt));
            expected.append(QStringLiteral("f%1").arg(i));
        }
        Permute(expected, 0, count);
        if (count == 17)
            QCOMPARE(expected.join(QLatin1String(" ")),
                QStringLiteral("f8 f16 f15 f14 f13 f12 f11 f10 f9 f0 f7 f6 f5 f4 f3 f2 f1"));
        const FeatureInfos infos = Catalogue(features);
        QCOMPARE(infos.FeatureCount(), count);
        QCOMPARE(infos.Categories().size(), std::size_t(count > 0 ? 1 : 0));
        if (count > 0)
            QCOMPARE(NamesIn(infos.Categories().at("/C")), expected);
    }

    void NoFeatureComesBeforeAnotherOne()
    {
        const FeatureInfos infos =
            Catalogue({MakeFeature("a", KltFeatureDataInt), MakeFeature("b", KltFeatureDataInt)});
        const std::vector<FeaturePtr>& features = infos.Categories().at("/C");
        TheScript().calls.clear();
        QVERIFY(!FeatureInfos::SortFeaturesByName(features[0], features[1]));
        QVERIFY(!FeatureInfos::SortFeaturesByName(features[1], features[0]));
        QCOMPARE(TheScript().calls["Feature::GetName"], 8);
    }

    void CategoriesAndEnumerationsStandInByteOrder()
    {
        const FeatureInfos infos = Catalogue({MakeFeature("b", KltFeatureDataEnum, ReadWrite, {}, "/b"),
            MakeFeature("B", KltFeatureDataEnum, ReadWrite, {{"x", 5}, {"y", -1}, {"z", 3}}, "/A/x"),
            MakeFeature("n", KltFeatureDataInt, ReadWrite, {}, ""),
            MakeFeature("\xc3\xa4", KltFeatureDataInt, ReadWrite, {}, "/\xc3\xa4"),
            ScriptedSdk::FeatureData{"", "(empty handle)", 0, 0, {}}});
        QStringList categories;
        for (const auto& category : infos.Categories())
            categories.append(QString::fromStdString(category.first));
        QCOMPARE(categories.join(QLatin1String(",")), QString::fromUtf8(",/A/x,/b,/\xc3\xa4"));
        QCOMPARE(infos.Enums().begin()->first, std::string("B"));
        QString values;
        for (const EnumEntry& entry : infos.Enums().at("B"))
        {
            KltInt64_t value = 0;
            entry.GetValue(value);
            values += QString::number(value) + QLatin1Char(' ');
        }
        QCOMPARE(values, QStringLiteral("-1 3 5 "));
        QVERIFY(infos.Enums().at("b").empty());
    }

    void ThePreviousCameraLeavesNothingBehind()
    {
        FeatureInfos infos = Catalogue({MakeFeature("Old", KltFeatureDataEnum)});
        const CameraPtr other =
            ScriptedSdk::MakeCamera(CameraWith({MakeFeature("New", KltFeatureDataInt, ReadWrite, {}, "/N")}));
        QCOMPARE(infos.Create(other), 0);
        QCOMPARE(infos.Categories().begin()->first, std::string("/N"));
        QVERIFY(infos.Enums().empty());
        for (ScriptedSdk::Which which : {First, Second})
        {
            QCOMPARE(infos.Create(other), 0);
            TheScript().faults.clear();
            TheScript().Fail("FeatureContainer::GetFeatures", -12, which);
            QCOMPARE(infos.Create(other), -12);
            QVERIFY(infos.Categories().empty() && infos.Enums().empty());
            TheScript().faults.clear();
        }
    }

    void MetadataThatCannotBeReadIsLeftOutSilently()
    {
        for (ScriptedSdk::Which which : {First, Second})
        {
            ScriptedSdk::Reset();
            for (const char* call : {"Feature::GetName@A", "Feature::GetCategory@A", "Feature::GetEntries@A"})
                TheScript().Fail(call, -3, which);
            TheScript().Fail("Feature::GetDataType@T", -3);
            const FeatureInfos infos = Catalogue({MakeFeature("A", KltFeatureDataEnum, ReadWrite, {{"x", 1}}),
                MakeFeature("T", KltFeatureDataEnum, ReadWrite, {{"x", 1}})});
            QCOMPARE(infos.Categories().at("").size(), std::size_t(1));
            QCOMPARE(infos.Enums().size(), std::size_t(1));
            QVERIFY(infos.Enums().at("").empty());
        }
    }

    void OfTwoEnumerationsWithOneNameTheLaterCounts()
    {
        const FeatureInfos infos = Catalogue(
            {MakeFeature("E", KltFeatureDataEnum, ReadWrite, {{"x", 1}}), MakeFeature("E", KltFeatureDataEnum)});
        QVERIFY(infos.Enums().at("E").empty());
        QCOMPARE(infos.FeatureCount(), 2);
    }

    void TextsAreReadInTwoCalls()
    {
        std::string text = "before";
        TheScript().Fail("Camera::GetName", -4, First);
        QCOMPARE(ReadFrom(CameraWith({}), text), 1);
        TheScript().faults.clear();
        TheScript().Fail("Camera::GetName", -4, Second);
        QCOMPARE(ReadFrom(CameraWith({}), text), 1);
        QCOMPARE(text, std::string("before"));
        TheScript().faults.clear();
        QCOMPARE(ReadFrom({std::string("a\0b", 3), "", {}}, text), 0);
        QCOMPARE(text, std::string("a"));
        QCOMPARE(ReadFrom({"", "", {}}, text), 0);
        QCOMPARE(text, std::string());
    }

    void ListsAreReadInTwoCalls()
    {
        std::vector<FeaturePtr> list(3);
        CameraPtr camera = ScriptedSdk::MakeCamera(CameraWith({}));
        const auto read = [&] { return ReadList(*camera, &Camera::GetFeatures, list); };
        TheScript().Fail("FeatureContainer::GetFeatures", -1);
        QCOMPARE(read(), -1);
        QCOMPARE(list.size(), std::size_t(3));
        TheScript().faults.clear();
        QCOMPARE(read(), 0);
        QVERIFY(list.empty());
        camera = ScriptedSdk::MakeCamera(CameraWith({MakeFeature("F", KltFeatureDataInt)}));
        TheScript().counts["FeatureContainer::GetFeatures"] = 5;
        QCOMPARE(read(), 0);
        QCOMPARE(list.size(), std::size_t(1));
    }

    void CodesAndTypesHaveTheirTexts()
    {
        const char* texts[] = {"No error.", "Unexpected fault in KltApi or driver.",
            "KltStartup was not called before the current command.",
            "The designated instance (camera, feature etc.) cannot be found.", "The given handle is not valid.",
            "Device was not opened for usage.", "Operation is invalid with the current access mode.",
            "One of the parameters was invalid (usually an illegal pointer).",
            "The given struct size is not valid for this version of the API.",
            "More data was returned in a string/list than space was provided.",
            "The feature type for this access function was wrong.",
            "The value was not valid; either out of bounds or not an increment of the minimum.", "Timeout during wait.",
            "Other error.", "Resources not available (e.g memory).",
            "Call is invalid in the current context (e.g callback).", "No transport layers were found.",
            "API feature is not implemented.", "API feature is not supported.",
            "A multiple registers reads or writes was partially completed."};
        for (int code = 0; code > -20; --code)
            QCOMPARE(KoltaHelper::ReturnCodeToString(code), QLatin1String(texts[-code]));
        for (int code : {-20, 1, INT_MIN, INT_MAX})
            QCOMPARE(KoltaHelper::ReturnCodeToString(code), QStringLiteral("<unknown>"));
        QStringList types;
        for (KltFeatureDataType type = 0; type < 10; ++type)
            types.append(KoltaHelper::DataTypeToString(type).remove(QLatin1String("KltFeatureData")));
        QCOMPARE(types.join(QLatin1String(" ")),
            QStringLiteral("Unknown Int Float Enum String Bool Command Raw None <unknown>"));
    }

    void OnlyCamerasThatComeOrGoAreAnnounced()
    {
        CameraObserver observer;
        QSignalSpy spy(&observer, SIGNAL(CameraListChangedSignal(UpdateTriggerType)));
        for (int reason : {0, 1, 2, 3, -1, INT_MAX, INT_MIN})
            static_cast<ICameraListObserver&>(observer).CameraListChanged(
                CameraPtr(), static_cast<UpdateTriggerType>(reason));
        QCOMPARE(spy.size(), 2);
    }

    void TheLastSharedPointerDestroysTheObserver()
    {
        CameraObserver* observer = new CameraObserver;
        QSignalSpy destroyed(observer, SIGNAL(destroyed(QObject*)));
        ICameraListObserverPtr first{shared_ptr<ICameraListObserver>(observer)};
        ICameraListObserverPtr second = first;
        QCOMPARE(second.use_count(), 2ll);
        first.reset();
        QVERIFY(first.get() == nullptr && destroyed.isEmpty());
        second = ICameraListObserverPtr();
        QCOMPARE(destroyed.size(), 1);
    }
};

QTEST_GUILESS_MAIN(CatalogueTest)
#include "CatalogueTest.moc"
