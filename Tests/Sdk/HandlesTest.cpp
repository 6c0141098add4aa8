#include <KoltaCPP/KoltaCPP.h>
#include <gtest/gtest.h>

#include <future>
#include <type_traits>

using namespace OPX::KltAPI;

namespace
{

struct Base
{
    virtual ~Base() = default;
};

struct Counted : Base
{
    explicit Counted(int& deaths) : m_deaths(deaths) {}
    ~Counted() override { ++m_deaths; }
    int& m_deaths;
};

enum Wide : long long
{
    WideValue = 5000000000
};

// Whoever writes the namespace before a type may write it before its values.
static_assert(OPX::KltAPI::KltErrorSuccess == 0 && OPX::KltAPI::KltErrorIncomplete == -19 &&
                  OPX::KltAPI::KltFeatureDataEnum == 3 && OPX::KltAPI::KltFeatureFlagsWrite == 2 &&
                  OPX::KltAPI::KltAccessModeFull == 1 && OPX::KltAPI::UpdateTriggerCameraLeft == 1,
    "");

template <class T, class = void>
struct CanSet : std::false_type
{
};

template <class T>
struct CanSet<T, decltype(static_cast<void>(std::declval<Feature&>().SetValue(std::declval<T>())))> : std::true_type
{
};

} // namespace

TEST(Handles, TheLastOneDestroysTheObjectOnce)
{
    int deaths = 0;
    EXPECT_EQ(shared_ptr<Base>().use_count(), 0);
    {
        const shared_ptr<Counted> first(new Counted(deaths));
        shared_ptr<Base> second = first;
        const shared_ptr<Base> third(second);
        EXPECT_EQ(first.use_count(), 3);
        second.reset();
        EXPECT_EQ(second.get(), nullptr);
        second = third;
        shared_ptr<Base> fourth(std::move(second));
        EXPECT_EQ(first.use_count(), 3);
        fourth.reset(new Counted(deaths));
        EXPECT_EQ(deaths, 0);
    }
    EXPECT_EQ(deaths, 2);
}

TEST(Handles, EveryKindOfValueCanBeSetAndPointersCannot)
{
    EXPECT_TRUE(CanSet<int>::value && CanSet<unsigned long>::value && CanSet<Wide>::value && CanSet<bool>::value);
    EXPECT_TRUE(CanSet<float>::value && CanSet<char*>::value && CanSet<UcharVector>::value);
    EXPECT_FALSE(CanSet<const int*>::value || CanSet<const unsigned char*>::value);
}

TEST(Handles, TheirMutexMayStartLocked)
{
    Mutex mutex(true);
    std::future<void> other = std::async(std::launch::async,
        [&]
        {
            mutex.Lock();
            mutex.Unlock();
        });
    EXPECT_EQ(other.wait_for(std::chrono::milliseconds(100)), std::future_status::timeout);
    mutex.Unlock();
    other.get();
}
