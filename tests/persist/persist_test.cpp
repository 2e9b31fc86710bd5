// The save and load streams: exact bytes, sharing, headers, numbers, and what becomes of invalid text.
#include "general/persist/persist.h"

#include <sstream>

#include "general/error/errorman.h"
#include "general/finfo/dirinfo.h"
#include "general/text/stringvec.h"
#include "tests/support/support.h"

namespace {

constexpr int binary = std::ios::binary;

struct Unsupported {
    friend std::ostream& operator<<(std::ostream& os, Unsupported const&) { return os; }
    friend std::istream& operator>>(std::istream& is, Unsupported&) { return is; }
};
struct Shape { // a program's own type
    int x = 0;
    Shape* next = nullptr;
};

template <class T>
concept Saveable = requires(NX_PersistTextSave& save, T const& value) {
    save << value;
};
template <class T>
concept Loadable = requires(NX_PersistTextLoad& load, T& value) {
    load >> value;
};
static_assert(!Saveable<bool> && !Saveable<long long> && !Saveable<long double> && !Saveable<NX_CompareType>);
static_assert(!Saveable<Unsupported> && !Saveable<std::string> && !Saveable<NX_StringVecA> &&
              !Saveable<void*>);
static_assert(!Loadable<bool> && !Loadable<long long> && !Loadable<NX_CompareType> && !Loadable<char[8]>);
static_assert(!Loadable<Unsupported> && !Loadable<std::string> && !Loadable<NX_StringVecA>);

template <class Write>
std::string saved(Write write, int mode = binary) {
    {
        NX_PersistTextSave save("saved.txt", mode, 0);
        write(save);
        EXPECT_TRUE(save.flush().good());
    }
    return nxFileContent("saved.txt");
}

// A load stream over a text; its errors are counted.
struct Loading {
    explicit Loading(std::string const& text)
        : stream((nxFileMake("load.txt", text), NX_StringA("load.txt")), binary, 0, failed, this) {}
    static void failed(void* context, NX_PersistTextLoad&, int, long) {
        ++static_cast<Loading*>(context)->errors;
    }
    int errors = 0;
    NX_PersistTextLoad stream;
};

template <class T>
void expectNumbersAsTheLibraryReads() {
    for (char const* text :
         {"12", " -5", "+7 ", "127x", "32768", "65535", "65536", "-32768", "-32769", "2147483648",
          "-2147483649", "4294967295", "-4294967295", "99999999999999999999999", "-", "x", "", "1,2"}) {
        Loading loading("S0 " + std::string(text));
        std::istringstream reference(text);
        T value = 77;
        T expected = 77;
        loading.stream >> value;
        reference >> expected;
        EXPECT_EQ(value, expected) << text;
        EXPECT_EQ(loading.stream.rdstate(), static_cast<int>(reference.rdstate())) << text;
    }
}

char const example[] = "S0\nD\nD5 a.txt \nP0 \nD 1998/7/4 9:5:2.0 120 32";

} // namespace

TEST(Persist, PrimitivesBytes) {
    EXPECT_EQ(saved([](NX_PersistTextSave& save) {
                  save << 'c' << static_cast<signed char>('s') << static_cast<unsigned char>(0xE9)
                       << short{-3} << static_cast<unsigned short>(65535) << -2147483647 - 1 << 4294967295u
                       << -1L << static_cast<unsigned long>(-1) << "te\"xt" << 1234567.0f << 0.1 << '\n';
                  save.dataSave("a b", 3);
              }),
              "S0cs\xE9-365535-21474836484294967295-14294967295te\"xt1.23457e+060.1\n a b");
    // In text mode lines end as the stream library ends them.
    std::ofstream("plain.txt") << "S0\nP0";
    EXPECT_EQ(saved([](NX_PersistTextSave& save) { save.pIsSaved(static_cast<void*>(nullptr), 4); }, 0),
              nxFileContent("plain.txt"));
    EXPECT_TRUE(NX_PersistTextSave("nodir/x", binary, 0).fail());
}

TEST(Persist, PrimitivesRead) {
    expectNumbersAsTheLibraryReads<short>();
    expectNumbersAsTheLibraryReads<unsigned short>();
    expectNumbersAsTheLibraryReads<int>();
    expectNumbersAsTheLibraryReads<unsigned int>();
    Loading loading("S0 x -1 4294967295 -2147483648 2.5 1e3  ab c\nline\nrest");
    NX_PersistTextLoad& load = loading.stream;
    char ch, text[8] = "-------";
    int i;
    unsigned long ul;
    long l;
    float f;
    double d;
    load >> ch >> i >> ul >> l >> f >> d;
    EXPECT_TRUE(ch == 'x' && i == -1 && ul == 4294967295u && l == -2147483647 - 1 && f == 2.5f &&
                d == 1000.0);
    load.dataLoad(text, 0).dataLoad(text, 3);
    EXPECT_STREQ(text, "ab ----");
    load.ignore(100, '\n').get(text, 3);
    EXPECT_STREQ(text, "li");
    load.ignore(2, 'z').ignore(1, '\n').get(text, 8);
    EXPECT_STREQ(text, "rest");
    EXPECT_EQ(loading.errors, 0);
    load.dataLoad(text, 2); // nothing is left: refused where everything is checked
    EXPECT_EQ(load.errorNum(), errorNumPersistText);
}

TEST(Persist, Headers) {
    constexpr int version = errorNumPersistVersion, wrong = errorNumPersistText;
    std::tuple<char const*, int, int> const table[] = {{"S0", 0, 0},       {"; one\n  ;two\n S0", 0, 0},
                                                       {"S 0", 0, 0},      {"S1", version, 1},
                                                       {"S", version, -1}, {"Sx", version, -1},
                                                       {"", wrong, -1},    {"; no line feed S0", wrong, -1},
                                                       {"s0", wrong, -1},  {"0S", wrong, -1}};
    for (auto const& [text, errorNum, found] : table) {
        Loading loading(text);
        EXPECT_EQ((NXS_Results{loading.stream.errorNum(), loading.stream.version(), loading.errors}),
                  (NXS_Results{errorNum, found, errorNum != 0}))
            << text;
    }
    int errors = 0;
    auto const count = [](void* context, NX_PersistTextLoad&, int, long) { ++*static_cast<int*>(context); };
    for (char const* name : {".", "none.txt"}) { // a directory opens as a file in places, and cannot be read
        NX_PersistTextLoad load(NX_StringA(name), binary, 0, count, &errors);
        EXPECT_EQ(load.errorNum(), errorNumPersistText) << name;
    }
    EXPECT_EQ(errors, 2);
    EXPECT_NE(std::string(NxErrorBuf().dataPConst()).find(" F=none.txt"), std::string::npos);
}

TEST(Persist, TheExampleComesBackExactly) {
    Loading loading(example);
    NX_FileInfo info;
    loading.stream >> info;
    EXPECT_TRUE(loading.errors == 0 && info.dirP() == nullptr);
    EXPECT_EQ(saved([&](NX_PersistTextSave& save) { save << info; }), example);
    std::ostringstream shown;
    shown << info;
    EXPECT_EQ(shown.str(), "a.txt 120 1998/7/4 9:5:2.0 -----\n");
}

TEST(Persist, SharingSurvives) {
    NX_StringA const a("abc"), b(a), empty;
    NX_FileAge8 const age = {1998, 7, 4, 9, 5, 2, 0};
    NX_FileAge8 const* const noAge = nullptr;
    std::string const text = saved(
        [&](NX_PersistTextSave& save) { save << a << b << &a << &age << &age << noAge << empty << empty; });
    EXPECT_EQ(text, "S0\nD\nD3 abc\nD\nP2\nP1\nD 1998/7/4 9:5:2.0\nP4\nP0\nD\nD0 \nP5");
    Loading loading(text.substr(0, text.size() - 3));
    NX_StringA c, d("old"), none("old"), *p = nullptr;
    NX_FileAge8 *q = nullptr, *r = nullptr, *s = nullptr;
    loading.stream >> c >> d >> p >> q >> r >> s >> none;
    EXPECT_STREQ(d.dataPConst(), "abc");
    EXPECT_EQ(c.dataPConst(), d.dataPConst()); // one block
    EXPECT_TRUE(loading.errors == 0 && none.strLen() == 0 && p == &c);
    EXPECT_TRUE(q == r && s == nullptr && q->ageCompareExact(age) == 0);
    delete q;
    std::string const bare = saved([&](NX_PersistTextSave& save) { save << &a; });
    Loading made(bare);
    NX_StringA* own = nullptr;
    made.stream >> own;
    EXPECT_STREQ(own->dataPConst(), "abc");
    delete own;
    NX_TextVecA vec;
    Loading other(bare + "\nP1"); // a character vector is not a string
    other.stream >> vec >> (own = nullptr);
    EXPECT_EQ(other.errors, 1);
    // A text that begins with white space comes back otherwise, as the format says.
    NX_PersistTextLoad plain((nxFileMake("load.txt", "S0\nD\nD5  ab\ncd"), "load.txt"), binary, 0);
    plain >> c;
    EXPECT_EQ(std::string(c.dataPConst(), 5), std::string("ab\0\0\0", 5));
    EXPECT_EQ(plain.errorNum(), 0);
}

TEST(Persist, ReferencesOfTheProgramsOwnTypes) {
    Shape shape;
    int other = 0;
    std::string const text = saved([&](NX_PersistTextSave& save) {
        EXPECT_EQ(save.pIsSaved(&shape, sizeof shape), 0);
        save << 5;
        for (int n = 0; n < 5000; ++n)
            EXPECT_EQ(save.pIsSaved(&shape, sizeof shape), 1);
        for (std::uintptr_t n = 1; n < 3000; ++n)
            save.pIsSaved(reinterpret_cast<void*>(n * 8), 1);
        EXPECT_EQ(save.pIsSaved(&other, sizeof other), 0);
        EXPECT_EQ(save.pIsSaved(reinterpret_cast<void*>(2999 * 8), 1), 1);
    });
    EXPECT_NE(text.find("\nD\nP3000"), std::string::npos);
    nxFileMake("load.txt", "S0\nD5\nP1\nP0\nD\nP2\nD");
    NX_PersistTextLoad load("load.txt", binary, 0);
    EXPECT_EQ(load.pIsLoaded(&shape, sizeof shape), nullptr);
    load >> shape.x;
    EXPECT_EQ(load.pIsLoaded(&shape, sizeof shape), &shape);
    void* const zero = load.pIsLoaded(nullptr, 0);
    EXPECT_TRUE(zero != nullptr && load.pIsZero(zero) && !load.pIsZero(&shape));
    EXPECT_EQ(load.pIsLoaded(nullptr, 4), nullptr); // a definition, registered by the caller
    load.pAppend(&other, sizeof other);
    EXPECT_EQ(load.pIsLoaded(nullptr, 4), &other);
}

TEST(Persist, WithoutHandlerErrorsEndTheProcess) {
    auto const loadAge = [](char const* text) {
        nxFileMake("load.txt", text);
        NX_PersistTextLoad load("load.txt", binary, 0);
        NX_FileAge8 age;
        load >> age >> age;
    };
    EXPECT_ERROR_ABORT(loadAge("S1"), errorNumPersistVersion);
    EXPECT_ERROR_ABORT(loadAge("S0\nX"), errorNumPersistText);
    EXPECT_NE(nxFileContent("quorix.log").find("P=4"), std::string::npos);
    EXPECT_ERROR_ABORT(loadAge("S0\nD 1998/7/4 9:5:2.0\nP2"), errorNumPersistText);
    EXPECT_ASSERTION(loadAge("S0\nD 1998/7/4 9:5:2.0\nP0"), "p == (pIsZero(p_p) ? 0 : p_p)",
                     "general/persist/pload");
    EXPECT_ASSERTION(loadAge("S0\nD 1998/7/4 9:5:2.0\nP1"), "rhs_p == 0", "general/persist/pload");
}
