#include "QnXmlLib16/values/QnVariant.h"

#include "QnXmlLib16/binding/XmlObjectBase.h"
#include "QnXmlLib16/collections/XmlCollectionBase.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/values/BigInteger.h"
#include "QnXmlLib16/values/BinaryData.h"
#include "QnXmlLib16/values/Conversions.h"
#include "QnXmlLib16/values/DateTime.h"
#include "QnXmlLib16/values/DateTimeSpan.h"
#include "QnXmlLib16/values/Decimal.h"
#include "QnXmlLib16/values/internal/PrimitiveTypes.h"

#include <cstring>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace QnXmlLib16 {

namespace {

// What a type's value is held in. Types of one form may be read as each other. Objects and
// collections count as numbers, being pointers.
enum class Form
{
    Number,
    Binary,
    Duration,
    DateTime,
    String,
    Decimal,
    Integer
};

constexpr Form FormOf(ItemType type)
{
    switch (type) {
#define QNXML_ROW(code, Name, Class, FormName)                                                     \
    case it_##code:                                                                                \
        return Form::FormName;
        QNXML_CLASS_TYPES(QNXML_ROW)
        QNXML_DECIMAL_TYPE(QNXML_ROW)
        QNXML_STRING_TYPE(QNXML_ROW)
#undef QNXML_ROW
    default:
        return Form::Number;
    }
}

[[noreturn]] void ThrowNoText(ItemType type)
{
    throw CQnException(
        FormatString("Invalid Type %d to convert to string", static_cast<int>(type)));
}

} // namespace

struct QnVariant::Steps
{
    template <class T>
    static void SetNumber(QnVariant& variant, ItemType type, T value)
    {
        static_assert(sizeof(value) <= sizeof(variant.m_value.uBits), "held in place");
        variant.Clear();
        std::memcpy(&variant.m_value.uBits, &value, sizeof(value));
        variant.m_type = type;
    }

    template <class T>
    static T GetNumber(const QnVariant& variant)
    {
        if constexpr (std::is_same_v<T, bool>) {
            return GetNumber<unsigned char>(variant) != 0;
        }
        else {
            T value = 0;
            if (!variant.m_bPayload)
                std::memcpy(&value, &variant.m_value.uBits, sizeof(value));
            return value;
        }
    }

    // Calls fn with a null pointer to the class that a form is held as; does nothing for numbers.
    template <class TFunction>
    static void WithClass(Form form, TFunction fn)
    {
        switch (form) {
#define QNXML_FORM(Name, Class)                                                                    \
    case Form::Name:                                                                               \
        return fn(static_cast<Class*>(nullptr));
            QNXML_FORM(Binary, CBinaryData)
            QNXML_FORM(Duration, CDateTimeSpan)
            QNXML_FORM(DateTime, CDateTime)
            QNXML_FORM(String, std::string)
            QNXML_FORM(Decimal, CDecimal)
            QNXML_FORM(Integer, CBigInteger)
#undef QNXML_FORM
        default:
            break;
        }
    }

    // The object of class T that lives in the variant.
    template <class T>
    static T* InPlace(const QnVariant& variant)
    {
        static_assert(sizeof(T) <= sizeof(Value) && alignof(T) <= alignof(Value));
        return std::launder(
            reinterpret_cast<T*>(const_cast<unsigned char*>(variant.m_value.acClass)));
    }

    // The value may be a part of the variant's own: it is complete when the old one goes.
    template <class T>
    static void SetClass(QnVariant& variant, ItemType type, T value)
    {
        variant.Clear();
        new (variant.m_value.acClass) T(std::move(value));
        variant.m_bPayload = true;
        variant.m_type = type;
    }

    // Takes over one reference, if there is an object.
    static void SetCounted(QnVariant& variant, ItemType type, void* pObject)
    {
        variant.Clear();
        variant.m_value.pObject = pObject;
        variant.m_bPayload = pObject != nullptr;
        variant.m_type = type;
    }

    template <class T>
    static T* Peek(const QnVariant& variant, Form form) noexcept
    {
        return variant.m_bPayload && FormOf(variant.m_type) == form ? InPlace<T>(variant) : nullptr;
    }

    template <class T>
    static T* PeekCounted(const QnVariant& variant, ItemType type) noexcept
    {
        return variant.m_bPayload && variant.m_type == type
                   ? static_cast<T*>(variant.m_value.pObject)
                   : nullptr;
    }

    template <class T>
    static T CopyOf(const T* pValue)
    {
        return pValue == nullptr ? T() : *pValue;
    }

    // `to` has no payload; `from` is left invalid. No class here fails to be moved.
    static void Move(QnVariant& from, QnVariant& to) noexcept
    {
        if (from.m_bPayload && !IsCounted(from.m_type)) {
            WithClass(FormOf(from.m_type), [&](auto* pClass) {
                using T = std::remove_pointer_t<decltype(pClass)>;
                T* const pFrom = InPlace<T>(from);
                new (to.m_value.acClass) T(std::move(*pFrom));
                pFrom->~T();
            });
        }
        else {
            to.m_value.uBits = from.m_value.uBits;
        }
        from.m_value.uBits = 0;
        to.m_bNil = std::exchange(from.m_bNil, false);
        to.m_type = std::exchange(from.m_type, it_none);
        to.m_bPayload = std::exchange(from.m_bPayload, false);
    }

    // `to` has no payload, and stays as it is if this throws. Of a nil source only the type counts.
    static void Copy(const QnVariant& from, QnVariant& to)
    {
        const bool bPayload = from.m_bPayload && !from.m_bNil;
        if (bPayload && !IsCounted(from.m_type)) {
            WithClass(FormOf(from.m_type), [&](auto* pClass) {
                using T = std::remove_pointer_t<decltype(pClass)>;
                new (to.m_value.acClass) T(*InPlace<T>(from));
            });
        }
        else {
            to.m_value.uBits = from.m_bNil ? 0 : from.m_value.uBits;
            if (bPayload && from.m_type == it_xmlObject)
                from.PeekXmlObject()->AddRef();
            if (bPayload && from.m_type == it_xmlCollection)
                from.PeekXmlCollection()->AddRef();
        }
        to.m_bPayload = bPayload;
        to.m_type = from.m_type;
        to.m_bNil = from.m_bNil;
    }

    static bool IsCounted(ItemType type)
    {
        return type == it_xmlObject || type == it_xmlCollection;
    }

    static void DestroyPayload(QnVariant& variant)
    {
        if (variant.m_type == it_xmlObject)
            static_cast<CXmlObjectBase*>(variant.m_value.pObject)->Release();
        else if (variant.m_type == it_xmlCollection)
            static_cast<CXmlCollectionBase*>(variant.m_value.pObject)->Release();
        else
            WithClass(FormOf(variant.m_type), [&](auto* pClass) {
                using T = std::remove_pointer_t<decltype(pClass)>;
                InPlace<T>(variant)->~T();
            });
    }
};

QnVariant::QnVariant(const QnVariant& other)
{
    Steps::Copy(other, *this);
}

QnVariant::QnVariant(QnVariant&& other) noexcept
{
    Steps::Move(other, *this);
}

QnVariant::~QnVariant()
{
    if (m_bPayload)
        Steps::DestroyPayload(*this);
}

QnVariant& QnVariant::operator=(const QnVariant& other)
{
    // The old value goes last, as the source may live inside an object that it holds.
    QnVariant old;
    // Deliberate: a variant assigned to itself is taken for a cleared source and loses its value.
    // Pinned by QnVariant.AssigningToItselfLosesTheValue.
    if (m_type != it_none)
        Steps::Move(*this, old);
    Steps::Copy(other, *this);
    return *this;
}

QnVariant& QnVariant::operator=(QnVariant&& other) noexcept
{
    QnVariant old;
    if (m_type != it_none)
        Steps::Move(*this, old);
    Steps::Move(other, *this);
    return *this;
}

void QnVariant::Clear()
{
    // Deliberate: without a type the nil flag stays, also through the setters, which clear first.
    // Pinned by QnVariant.WithoutATypeThereIsNoTextAndTheNilFlagStays.
    if (m_type == it_none)
        return;
    if (m_bPayload) {
        const QnVariant old(std::move(*this));
        return;
    }
    m_bNil = false;
    m_type = it_none;
    m_value.uBits = 0;
}

void QnVariant::SetInvalid()
{
    Clear();
}

void QnVariant::SetNil()
{
    const ItemType type = m_type;
    Clear();
    m_bNil = true;
    m_type = type;
}

std::string QnVariant::GetType() const
{
    switch (m_type) {
#define QNXML_ROW(code, ...)                                                                       \
    case it_##code:                                                                                \
        return #code;
        QNXML_NUMBER_TYPES(QNXML_ROW)
        QNXML_CHAR_TYPE(QNXML_ROW)
        QNXML_FLOAT_TYPES(QNXML_ROW)
        QNXML_CLASS_TYPES(QNXML_ROW)
        QNXML_DECIMAL_TYPE(QNXML_ROW)
        QNXML_STRING_TYPE(QNXML_ROW)
#undef QNXML_ROW
    default:
        throw CQnException(FormatString("Invalid Type %d", static_cast<int>(m_type)));
    }
}

#define QNXML_ACCESS(code, Name, Carrier)                                                          \
    void QnVariant::Set##Name(Carrier value)                                                       \
    {                                                                                              \
        Steps::SetNumber(*this, it_##code, value);                                                 \
    }                                                                                              \
    Carrier QnVariant::Get##Name() const                                                           \
    {                                                                                              \
        return Steps::GetNumber<Carrier>(*this);                                                   \
    }
QNXML_NUMBER_TYPES(QNXML_ACCESS)
QNXML_CHAR_TYPE(QNXML_ACCESS)
QNXML_FLOAT_TYPES(QNXML_ACCESS)
#undef QNXML_ACCESS

#define QNXML_ACCESS(code, Name, Class, FormName)                                                  \
    void QnVariant::Set##Name(const Class& value)                                                  \
    {                                                                                              \
        Steps::SetClass<Class>(*this, it_##code, value);                                           \
    }                                                                                              \
    Class QnVariant::Get##Name() const                                                             \
    {                                                                                              \
        return Steps::CopyOf(Peek##FormName());                                                    \
    }
QNXML_CLASS_TYPES(QNXML_ACCESS)
QNXML_DECIMAL_TYPE(QNXML_ACCESS)
#undef QNXML_ACCESS

void QnVariant::SetString(std::string value)
{
    Steps::SetClass(*this, it_string, std::move(value));
}

std::string QnVariant::GetString() const
{
    return Steps::CopyOf(PeekString());
}

void QnVariant::SetXmlObject(CXmlObjectBase* pObject)
{
    if (pObject != nullptr)
        pObject->AddRef();
    Steps::SetCounted(*this, it_xmlObject, pObject);
}

CSmartPtr<CXmlObjectBase> QnVariant::GetXmlObject() const
{
    return PeekXmlObject();
}

void QnVariant::SetXmlCollection(CXmlCollectionBase* pCollection)
{
    if (pCollection != nullptr)
        pCollection->AddRef();
    Steps::SetCounted(*this, it_xmlCollection, pCollection);
}

CSmartPtr<CXmlCollectionBase> QnVariant::GetXmlCollection() const
{
    return PeekXmlCollection();
}

#define QNXML_PEEK(Class, FormName)                                                                \
    const Class* QnVariant::Peek##FormName() const noexcept                                        \
    {                                                                                              \
        return Steps::Peek<Class>(*this, Form::FormName);                                          \
    }
QNXML_PEEK(CBinaryData, Binary)
QNXML_PEEK(CDateTimeSpan, Duration)
QNXML_PEEK(CDateTime, DateTime)
QNXML_PEEK(std::string, String)
QNXML_PEEK(CDecimal, Decimal)
QNXML_PEEK(CBigInteger, Integer)
#undef QNXML_PEEK

CXmlObjectBase* QnVariant::PeekXmlObject() const noexcept
{
    return Steps::PeekCounted<CXmlObjectBase>(*this, it_xmlObject);
}

CXmlCollectionBase* QnVariant::PeekXmlCollection() const noexcept
{
    return Steps::PeekCounted<CXmlCollectionBase>(*this, it_xmlCollection);
}

std::string QnVariant::ToString(const char* pszFormat) const
{
    const char* const pszForm = pszFormat == nullptr ? "" : pszFormat;
    switch (m_type) {
#define QNXML_NUMBER(code, Name, Carrier)                                                          \
    case it_##code:                                                                                \
        return CConversions::code##ToString(Get##Name());
#define QNXML_FLOAT(code, Name, Carrier)                                                           \
    case it_##code:                                                                                \
        return CConversions::code##ToString(Get##Name(), pszForm);
#define QNXML_CLASS(code, Name, Class, FormName)                                                   \
    case it_##code:                                                                                \
        if (const Class* const pValue = Peek##FormName())                                          \
            return CConversions::code##ToString(*pValue);                                          \
        break;
        QNXML_NUMBER_TYPES(QNXML_NUMBER)
        QNXML_CHAR_TYPE(QNXML_NUMBER)
        QNXML_FLOAT_TYPES(QNXML_FLOAT)
        QNXML_CLASS_TYPES(QNXML_CLASS)
        QNXML_STRING_TYPE(QNXML_CLASS)
#undef QNXML_NUMBER
#undef QNXML_FLOAT
#undef QNXML_CLASS
    case it_decimal:
        if (const CDecimal* const pValue = PeekDecimal())
            return CConversions::decimalToString(*pValue, pszForm);
        break;
    default:
        break;
    }
    ThrowNoText(m_type);
}

void QnVariant::FromString(const std::string& value, ItemType type,
                           CWhitespaceUtils::WhitespaceRule rule)
{
    switch (type) {
#define QNXML_NUMBER(code, Name, Carrier)                                                          \
    case it_##code:                                                                                \
        Set##Name(CConversions::code##FromString(value, rule));                                    \
        return;
#define QNXML_CLASS(code, ...)                                                                     \
    case it_##code:                                                                                \
        Steps::SetClass(*this, type, CConversions::code##FromString(value, rule));                 \
        return;
        QNXML_NUMBER_TYPES(QNXML_NUMBER)
        QNXML_CHAR_TYPE(QNXML_NUMBER)
        QNXML_FLOAT_TYPES(QNXML_NUMBER)
        QNXML_CLASS_TYPES(QNXML_CLASS)
        QNXML_DECIMAL_TYPE(QNXML_CLASS)
        QNXML_STRING_TYPE(QNXML_CLASS)
#undef QNXML_NUMBER
#undef QNXML_CLASS
    default:
        ThrowNoText(type);
    }
}

} // namespace QnXmlLib16
