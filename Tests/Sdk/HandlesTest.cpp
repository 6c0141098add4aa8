#include <KoltaCPP/KoltaCPP.h>
#include <gtest/gtest.h>

#include <type_traits>

using namespace OPX::KltAPI;

namespace
{

struct Base
{
    virtual ~Base() {}
};

struct Counted : Base
{
    explicit Counted(int& deaths) : m_deaths(deaths) {}
    ~Counted() override { ++m_deaths; }
    int& m_deaths;
};

enum Plain
{
    PlainValue = 3
};

enum Wide : long long
{
    WideValue = 5000000000ll
};

template <class T>
using SetResult = decltype(std::declval<Feature&>().SetValue(std::declval<T>()));

template <class T, class = void>
struct CanSet : std::false_type
{
};

template <class T>
struct CanSet<T, decltype(static_cast<void>(std::declval<SetResult<T>>()))> : std::true_type
{
};

} // namespace

TEST(Handles, TheLastOneDestroysTheObjectOnce)
{
    int deaths = 0;
    shared_ptr<Base> empty;
    EXPECT_EQ(empty.get(), nullptr);
    EXPECT_EQ(empty.use_count(), 0);
    {
        const shared_ptr<Counted> first(new Counted(deaths));
        shared_ptr<Base> second = first;
        const shared_ptr<Base> third(second);
        EXPECT_EQ(first.use_count(), 3);
        second = second;
        second.reset();
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
    EXPECT_TRUE(CanSet<int>::value && CanSet<unsigned long>::value && CanSet<KltInt64_t>::value);
    EXPECT_TRUE(CanSet<Plain>::value && CanSet<Wide>::value && CanSet<bool>::value && CanSet<float>::value);
    EXPECT_TRUE(CanSet<const char*>::value && CanSet<char*>::value && CanSet<UcharVector>::value);
    EXPECT_FALSE(CanSet<const int*>::value || CanSet<const unsigned char*>::value);
}
