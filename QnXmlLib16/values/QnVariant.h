#pragma once

#include "QnXmlLib16/support/Export.h"
#include "QnXmlLib16/support/SmartPtr.h"
#include "QnXmlLib16/validation/WhitespaceUtils.h"
#include "QnXmlLib16/values/ItemType.h"

#include <string>

namespace QnXmlLib16 {

class CBigInteger;
class CBinaryData;
class CDateTime;
class CDateTimeSpan;
class CDecimal;
class CXmlCollectionBase;
class CXmlObjectBase;

// One value of any primitive, or a counted reference to an object or collection, on its way
// between a property of a generated class and the metadata. It is invalid (no type), holds a
// value, or is nil (xsi:nil: a type without a value). Values are copied in and out, objects are
// shared. One variant belongs to one thread.
class QNXML_API QnVariant
{
public:
    QnVariant() noexcept {}
    QnVariant(const QnVariant& other);
    // The source is left invalid.
    QnVariant(QnVariant&& other) noexcept;
    virtual ~QnVariant();

    // Clears this variant first, so that assigning one to itself loses the value. A nil source
    // gives a nil variant of its type.
    QnVariant& operator=(const QnVariant& other);
    QnVariant& operator=(QnVariant&& other) noexcept;

    // Gives up the value, the type and the nil flag. A variant without a type keeps its nil flag,
    // which nothing but an assignment takes from it then.
    void Clear();

    // A type, or nil.
    bool IsValid() const noexcept { return m_type != it_none || m_bNil; }
    void SetInvalid();

    bool IsNil() const noexcept { return m_bNil; }
    // Gives up the value and keeps the type.
    void SetNil();

    ItemType GetItemType() const noexcept { return m_type; }
    // The name of the primitive: "string", "i4". Throws CQnException "Invalid Type %d" without a
    // type, and for objects and collections.
    std::string GetType() const;

    // Each sets the type that it is named for. The value is taken before the old one goes, so a
    // part of this variant's own value may be given. A CDateTime is stored whatever its kind.
    void SetHexBinary(const CBinaryData& value);
    void SetBase64Binary(const CBinaryData& value);
    void SetI1(char value);
    void SetI2(short value);
    void SetI4(long value);
    void SetI8(long long value);
    void SetUI1(unsigned char value);
    void SetUI2(unsigned short value);
    void SetUI4(unsigned long value);
    void SetUI8(unsigned long long value);
    void SetR4(float value);
    void SetR8(double value);
    void SetDuration(const CDateTimeSpan& value);
    void SetYearMonth(const CDateTime& value);
    void SetMonthDay(const CDateTime& value);
    void SetYear(unsigned short value);
    void SetMonth(unsigned char value);
    void SetDay(unsigned char value);
    void SetDate(const CDateTime& value);
    void SetDateTime(const CDateTime& value);
    void SetTime(const CDateTime& value);
    void SetChar(char value);
    void SetString(std::string value);
    void SetBoolean(bool value);
    void SetDecimal(const CDecimal& value);
    void SetInteger(const CBigInteger& value);
    // Takes a counted reference; null is allowed.
    void SetXmlObject(CXmlObjectBase* pObject);
    void SetXmlCollection(CXmlCollectionBase* pCollection);

    // The type is the caller's to know. Without a value, or with one that is held in another form
    // (a date asked of a string), the result is 0, an empty value or null. Numbers of another
    // width come as their low bits.
    CBinaryData GetHexBinary() const;
    CBinaryData GetBase64Binary() const;
    char GetI1() const;
    short GetI2() const;
    long GetI4() const;
    long long GetI8() const;
    unsigned char GetUI1() const;
    unsigned short GetUI2() const;
    unsigned long GetUI4() const;
    unsigned long long GetUI8() const;
    float GetR4() const;
    double GetR8() const;
    CDateTimeSpan GetDuration() const;
    CDateTime GetYearMonth() const;
    CDateTime GetMonthDay() const;
    unsigned short GetYear() const;
    unsigned char GetMonth() const;
    unsigned char GetDay() const;
    CDateTime GetDate() const;
    CDateTime GetDateTime() const;
    CDateTime GetTime() const;
    char GetChar() const;
    std::string GetString() const;
    bool GetBoolean() const;
    CDecimal GetDecimal() const;
    CBigInteger GetInteger() const;
    CSmartPtr<CXmlObjectBase> GetXmlObject() const;
    CSmartPtr<CXmlCollectionBase> GetXmlCollection() const;

    // The value itself, without a copy, until this variant changes. Null where the getter gives an
    // empty value for want of one.
    const CBinaryData* PeekBinary() const noexcept; // hexBinary, base64Binary
    const CDateTimeSpan* PeekDuration() const noexcept;
    const CDateTime* PeekDateTime() const noexcept; // yearMonth, monthDay, date, datetime, time
    const std::string* PeekString() const noexcept;
    const CDecimal* PeekDecimal() const noexcept;
    const CBigInteger* PeekInteger() const noexcept;
    CXmlObjectBase* PeekXmlObject() const noexcept; // no reference is taken
    CXmlCollectionBase* PeekXmlCollection() const noexcept;

    // The lexical form, by CConversions. pszFormat reaches r4, r8 and decimal; null counts as
    // empty. The nil flag is not looked at: callers test IsNil() first. Objects, collections, no
    // type, and a nil variant of any type but a number's throw CQnException "Invalid Type %d to
    // convert to string".
    std::string ToString(const char* pszFormat) const;

    // Parses `value` as `type` and stores it, whatever was held before. What CConversions throws
    // passes through and leaves the variant as it was. A type outside it_hexBinary to it_integer
    // throws CQnException "Invalid Type %d to convert to string".
    void FromString(const std::string& value, ItemType type, CWhitespaceUtils::WhitespaceRule rule);

private:
    struct QNXML_PRIVATE Steps;

    // Values lie in place, whatever their type: a document passes through variants, and an
    // allocation for each value would cost more than the value itself.
    union Value
    {
        unsigned long long uBits;  // a number
        void* pObject;             // one counted reference
        unsigned char acClass[64]; // an object of the class that m_type stands for
    };

    bool m_bNil = false;
    bool m_bPayload = false; // an object lives in acClass, or pObject is not null
    ItemType m_type = it_none;
    Value m_value{0};
};

} // namespace QnXmlLib16
