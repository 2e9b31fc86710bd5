// general/persist/pload.cpp - the load stream.
#include <limits>

#include "general/error/errorman.h"
#include "general/persist/persistin.h"

namespace {

constexpr char sourceName[] = "general/persist/pload";

bool isSpace(int ch) {
    return ch == ' ' || (ch >= '\t' && ch <= '\r');
}

} // namespace

NX_PersistTextLoad::NX_PersistTextLoad(char const* fileName, int openMode, int) : in_(new NXS_PersistIn) {
    loadInit(fileName, openMode);
}

NX_PersistTextLoad::NX_PersistTextLoad(NX_StringA const& fileName, int openMode, int)
    : in_(new NXS_PersistIn) {
    loadInit(fileName.dataPConst(), openMode);
}

NX_PersistTextLoad::NX_PersistTextLoad(NX_StringA const& fileName, int openMode, int, ErrorHandler handler,
                                       void* context)
    : in_(new NXS_PersistIn), handler_(handler), handlerContext_(context) {
    in_->fileName = fileName;
    loadInit(fileName.dataPConst(), openMode);
}

NX_PersistTextLoad::~NX_PersistTextLoad() {
    std::basic_ios<char>::rdbuf(nullptr);
    delete in_;
}

void NX_PersistTextLoad::loadInit(char const* fileName, int openMode) {
    std::basic_ios<char>::rdbuf(in_);
    imbue(std::locale::classic());
    table_.itemQtyCap(100);
    table_ += NX_PersistP{nullptr, 0};
    in_->meta += NXS_PersistMeta{nullptr, nullptr, false};
    if (!in_->open(fileName, openMode))
        setstate(std::ios_base::failbit);
    char ch = 0;
    while (*this >> ch, good() && ch == ';') { // a comment takes the rest of its line
        int next;
        while ((next = in_->peek()) >= 0) {
            in_->skip();
            if (next == '\n')
                break;
        }
    }
    if (fail() || ch != 'S') {
        loadERR(errorNumPersistText);
        return;
    }
    long number = -1;
    *this >> number;
    if (!fail())
        version_ = number;
    if (version_ != 0)
        loadERR(errorNumPersistVersion);
}

void NX_PersistTextLoad::loadERR(int errorNum) {
    if (errorNum_ != 0)
        return;
    long const pos = in_->position();
    NxERROR(errorNum, sourceName, __LINE__);
    if (handler_ == nullptr) {
        NxErrorBufPos(pos);
        NxErrorAbort("");
    }
    NxErrorBufFileName(in_->fileName);
    NxErrorBufPos(pos);
    errorNum_ = errorNum;
    errorPos_ = pos;
    setstate(std::ios_base::badbit | std::ios_base::failbit);
    handler_(handlerContext_, *this, errorNum, pos);
}

// Prepares a formatted read: 1 when a character other than white space comes next.
int NX_PersistTextLoad::sentry() {
    if (!good() || errorNum_ != 0) {
        setstate(std::ios_base::failbit);
        return 0;
    }
    int ch;
    while (isSpace(ch = in_->peek()))
        in_->skip();
    if (ch >= 0)
        return 1;
    setstate(std::ios_base::eofbit | std::ios_base::failbit);
    return 0;
}

NX_PersistTextLoad& NX_PersistTextLoad::operator>>(char& ch) {
    if (sentry()) {
        ch = static_cast<char>(in_->peek());
        in_->skip();
    } else if (errorNum_ != 0) {
        ch = 0;
    }
    return *this;
}

NX_PersistTextLoad& NX_PersistTextLoad::operator>>(signed char& ch) {
    return *this >> reinterpret_cast<char&>(ch);
}

NX_PersistTextLoad& NX_PersistTextLoad::operator>>(unsigned char& ch) {
    return *this >> reinterpret_cast<char&>(ch);
}

// As the stream library reads a decimal number: a sign is allowed, also before an unsigned one, which then
// wraps; a value out of range fails and becomes the nearest one, no digits fail and give 0.
template <class T>
void NX_PersistTextLoad::numberLoad(T& value) {
    if (!sentry()) {
        if (errorNum_ != 0)
            value = 0;
        return;
    }
    int ch = in_->peek();
    bool const isNegative = ch == '-';
    if (isNegative || ch == '+') {
        in_->skip();
        ch = in_->peek();
    }
    constexpr bool hasSign = std::is_signed_v<T>;
    std::uint64_t const most = std::uint64_t{std::numeric_limits<T>::max()} + (hasSign && isNegative);
    std::uint64_t sum = 0;
    bool isEmpty = true;
    for (; ch >= '0' && ch <= '9'; ch = in_->peek()) {
        if (sum <= most)
            sum = sum * 10 + static_cast<unsigned int>(ch - '0');
        isEmpty = false;
        in_->skip();
    }
    std::ios_base::iostate state = ch < 0 ? std::ios_base::eofbit : std::ios_base::goodbit;
    if (isEmpty || sum > most)
        state |= std::ios_base::failbit;
    if (sum > most)
        value = hasSign && isNegative ? std::numeric_limits<T>::min() : std::numeric_limits<T>::max();
    else
        value = static_cast<T>(isNegative ? 0 - sum : sum);
    if (state != std::ios_base::goodbit)
        setstate(state);
}

NX_PersistTextLoad& NX_PersistTextLoad::operator>>(short& value) {
    numberLoad(value);
    return *this;
}

NX_PersistTextLoad& NX_PersistTextLoad::operator>>(unsigned short& value) {
    numberLoad(value);
    return *this;
}

NX_PersistTextLoad& NX_PersistTextLoad::operator>>(int& value) {
    numberLoad(value);
    return *this;
}

NX_PersistTextLoad& NX_PersistTextLoad::operator>>(unsigned int& value) {
    numberLoad(value);
    return *this;
}

NX_PersistTextLoad& NX_PersistTextLoad::operator>>(long& value) {
    auto number = static_cast<std::int32_t>(value);
    bool const isRead = good();
    numberLoad(number);
    if (isRead || errorNum_ != 0)
        value = number;
    return *this;
}

NX_PersistTextLoad& NX_PersistTextLoad::operator>>(unsigned long& value) {
    auto number = static_cast<std::uint32_t>(value);
    bool const isRead = good();
    numberLoad(number);
    if (isRead || errorNum_ != 0)
        value = number;
    return *this;
}

template <class T>
void NX_PersistTextLoad::floatLoad(T& value) {
    if (errorNum_ != 0)
        value = 0;
    else
        static_cast<std::ifstream&>(*this) >> value;
}

NX_PersistTextLoad& NX_PersistTextLoad::operator>>(float& value) {
    floatLoad(value);
    return *this;
}

NX_PersistTextLoad& NX_PersistTextLoad::operator>>(double& value) {
    floatLoad(value);
    return *this;
}

NX_PersistTextLoad& NX_PersistTextLoad::get(char* p, unsigned int n) {
    if (errorNum_ == 0)
        std::ifstream::get(p, static_cast<std::streamsize>(n));
    else if (n != 0)
        *p = 0;
    return *this;
}

NX_PersistTextLoad& NX_PersistTextLoad::dataLoad(char* p, unsigned int n) {
    if (n == 0)
        return *this;
    unsigned int const done = sentry() ? in_->lineRead(p, n) : 0;
    if (done < n) {
        std::fill(p + done, p + n, '\0');
        if (in_->peek() < 0)
            setstate(std::ios_base::eofbit);
    }
    NXS_PersistLoader::check(*this, done == n);
    return *this;
}

NX_PersistTextLoad& NX_PersistTextLoad::ignore(int n, int delimiter) {
    if (errorNum_ == 0)
        std::ifstream::ignore(n, delimiter);
    return *this;
}

// Reads the letter of a reference and its number: NXS_PersistLoader::Ref.
int NX_PersistTextLoad::refLoad(unsigned int* number) {
    char letter = 0;
    *this >> letter;
    if (errorNum_ == 0 && !fail()) {
        if (letter == 'D')
            return NXS_PersistLoader::refDefinition;
        if (letter == 'P') {
            *this >> *number;
            if (!fail() && *number < table_.itemQty())
                return NXS_PersistLoader::refObject;
        }
    }
    loadERR(errorNumPersistText);
    return NXS_PersistLoader::refFailed;
}

void* NX_PersistTextLoad::pIsLoaded() {
    unsigned int number = 0;
    int const ref = refLoad(&number);
    if (ref == NXS_PersistLoader::refDefinition)
        return nullptr;
    if (ref == NXS_PersistLoader::refFailed || number == 0)
        return this; // what pIsZero knows as the null pointer
    return const_cast<void*>(table_[number].p);
}

void* NX_PersistTextLoad::pIsLoaded(void* p, unsigned int size) {
    void* const found = pIsLoaded();
    if (p == nullptr || errorNum_ != 0)
        return found;
    if (found == nullptr)
        pAppend(p, size);
    else if (handler_ == nullptr)
        refAssert(p, pIsZero(found) ? nullptr : found);
    else if (found != p)
        loadERR(errorNumPersistText);
    return found;
}

// A caller that holds an object must not meet a reference to another one.
void NX_PersistTextLoad::refAssert(void const* p, void const* found) {
    if (p != found)
        NxAssertFail(sourceName, 270, "p == (pIsZero(p_p) ? 0 : p_p)");
}

void NX_PersistTextLoad::pAppend(void* p, unsigned int size) {
    if (errorNum_ != 0)
        return;
    table_ += NX_PersistP{p, size};
    in_->meta += NXS_PersistMeta{nullptr, nullptr, false};
}
