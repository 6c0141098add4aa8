#include "CameraObserver.h"
#include "FeatureInfos.h"
#include "KoltaHelper.h"
#include "SdkReads.h"
#include "Stored.h"
#include "TestData.h"

#include <QSignalSpy>
#include <QtTest>

#include <climits>

using namespace OPX::KltAPI;
using namespace TestData;
using ScriptedSdk::First;
using ScriptedSdk::Second;
using ScriptedSdk::TheScript;

namespace
{

/// Finds no memory.
struct Greedy
{
    Greedy() { throw std::bad_alloc(); }
};

struct Giver
{
    KltErrorType Give(Greedy*, unsigned int& count)
    {
        count = 1;
        return KltErrorSuccess;
    }
};

} // namespace

class CatalogueTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { ScriptedSdk::Reset(); }

    /// It is what sorting with a comparison that is always false makes of more than 16.
    void FeaturesOfOneCategoryKeepTheOrderThatClassesAlwaysHad()
    {
        QString order;
        for (int count : {1, 2, 16, 17, 20, 33, 100})
        {
            std::vector<ScriptedSdk::FeatureData> features;
            for (int i = 0; i < count; ++i)
                features.push_back(MakeFeature('f' + std::to_string(i), KltFeatureDataInt));
            const FeatureInfos infos = Catalogue(features);
            for (const FeaturePtr& feature : infos.Categories().at("/C"))
                order += QString::fromStdString(TextOf(*feature, &Feature::GetName)) + ' ';
            order += '\n';
        }
        const QByteArray difference = DifferenceFromStored("Order.txt", order);
        QVERIFY2(difference.isEmpty(), difference.constData());
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
            MakeFeature("", 0, 0, {}, ScriptedSdk::EmptyHandle)});
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
        TheScript().Fail("FeatureContainer::GetFeatures", -12, Second);
        QCOMPARE(infos.Create(other), -12);
        QVERIFY(infos.Categories().empty() && infos.Enums().empty());
    }

    void OfTwoEnumerationsWithOneNameTheLaterCounts()
    {
        const FeatureInfos infos = Catalogue(
            {MakeFeature("E", KltFeatureDataEnum, ReadWrite, {{"x", 1}}), MakeFeature("E", KltFeatureDataEnum)});
        QVERIFY(infos.Enums().at("E").empty());
        QCOMPARE(infos.FeatureCount(), 2);
    }

    void TextsAndListsAreReadInTwoCalls()
    {
        for (ScriptedSdk::Which which : {First, Second})
        {
            ScriptedSdk::Reset();
            TheScript().Fail("Camera::GetName", -4, which);
            TheScript().Fail("FeatureContainer::GetFeatures", -4, which);
            const CameraPtr camera = ScriptedSdk::MakeCamera(CameraWith({MakeFeature("F", KltFeatureDataInt)}));
            std::string text = "before";
            std::vector<FeaturePtr> list(3);
            QVERIFY(!ReadString(*camera, &Camera::GetName, text));
            QCOMPARE(text, std::string("before"));
            QCOMPARE(ReadList(*camera, &Camera::GetFeatures, list), -4);
            QCOMPARE(list.size(), std::size_t(3));
            TheScript().faults.clear();
            TheScript().counts["FeatureContainer::GetFeatures"] = 5;
            QCOMPARE(ReadList(*camera, &Camera::GetFeatures, list), 0);
            QCOMPARE(list.size(), std::size_t(1));
        }
        std::string text = "before";
        QVERIFY(ReadString(*ScriptedSdk::MakeCamera({std::string("a\0b", 3), "", {}}), &Camera::GetName, text));
        QCOMPARE(text, std::string("a"));
        QVERIFY(ReadString(*ScriptedSdk::MakeCamera({"", "", {}}), &Camera::GetName, text));
        QVERIFY(text.empty());
        std::vector<FeaturePtr> list(3);
        QCOMPARE(ReadList(*ScriptedSdk::MakeCamera(CameraWith({})), &Camera::GetFeatures, list), 0);
        QVERIFY(list.empty());
        std::vector<Greedy> items;
        Giver giver;
        QCOMPARE(ReadList(giver, &Giver::Give, items), KltErrorResources);
    }

    void CodesAndTypesHaveTheirTexts()
    {
        QString texts;
        for (int code : {INT_MIN, -20, -19, -18, -17, -16, -15, -14, -13, -12, -11, -10, -9, -8, -7, -6, -5, -4, -3, -2,
                 -1, 0, 1, INT_MAX})
            texts += QString::number(code) + ' ' + KoltaHelper::ReturnCodeToString(code) + '\n';
        for (KltFeatureDataType type : {0u, 1u, 2u, 3u, 4u, 5u, 6u, 7u, 8u, 9u, ~0u})
            texts += QString::number(type) + ' ' + KoltaHelper::DataTypeToString(type) + '\n';
        const QByteArray difference = DifferenceFromStored("Texts.txt", texts);
        QVERIFY2(difference.isEmpty(), difference.constData());
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
};

QTEST_GUILESS_MAIN(CatalogueTest)
#include "CatalogueTest.moc"
