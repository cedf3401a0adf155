#include "QnXmlLib16/validation/RegEx.h"

#include "QnXmlLib16/support/Encoder.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/support/internal/StackLeft.h"
#include "QnXmlLib16/values/BinaryData.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <memory>
#include <pcre.h>
#include <vector>

namespace QnXmlLib16 {

namespace {

struct CPatternFree
{
    void operator()(pcre* p) const { pcre_free(p); }
};
struct CStudyFree
{
    void operator()(pcre_extra* p) const { pcre_free_study(p); }
};
struct CJitStackFree
{
    void operator()(pcre_jit_stack* p) const { pcre_jit_stack_free(p); }
};
using PatternPtr = std::unique_ptr<pcre, CPatternFree>;
using StudyPtr = std::unique_ptr<pcre_extra, CStudyFree>;
using JitStackPtr = std::unique_ptr<pcre_jit_stack, CJitStackFree>;

// The interpreter recurses on the C stack, at about half of this a level.
constexpr std::size_t kBytesPerLevel = 1024;
// Beyond this depth compiling to machine code costs less than going on.
constexpr std::size_t kCheapLevels = 1000;
// Room for compiled code to remember where to go back to; taken page by page as it is used.
constexpr std::size_t kJitStackStart = 32 * 1024;
constexpr std::size_t kJitStackBase = 1024 * 1024;
constexpr std::size_t kJitStackPerByte = 256;
constexpr std::size_t kJitStackMax = 256 * 1024 * 1024;

// Deliberate: plain replacement, which knows nothing of character classes: "[\i]" and
// "\p{IsLatinExtended-B}" come out as patterns that the engine refuses.
// Pinned by RegEx.SomeSchemaFormsAreRefusedAfterTranslation.
void Translate(std::string& pattern)
{
    static const struct
    {
        const char* pszSchema;
        const char* pszEngine;
    } rows[] = {
        {"\\\\", "\x01"}, // out of the way, so that its second half starts no escape
        {"\\i", "([^\\W\\d]|:)"},
        {"\\I", "([\\W\\d])"},
        {"\\c", "(\\w|\\.|-|:)"},
        {"\\C", "([^\\w\\.\\-\\:])"},
        {"\\p{IsBasicLatin}", "[\\000-\\177]"},
        {"\\p{IsLatin-1Supplement}", "[\\200-\\377]"},
        {"\\p{IsLatinExtended-A}", "[\\400-\\577]"},
        {"\\p{IsLatinExtended-B}", "[\\600-\\1117]"},
        {"\x01", "\\\\"},
    };
    for (const auto& row : rows)
        FindReplace(pattern, row.pszSchema, row.pszEngine);
    pattern = "^(" + pattern + ")$";
}

PatternPtr Compile(const std::string& pattern, const std::string& value)
{
    const char* pszError = nullptr;
    int iOffset = 0;
    // Anchored here and not at the match, as compiled code takes no options there.
    PatternPtr pPattern(
        pcre_compile(pattern.c_str(), PCRE_UTF8 | PCRE_ANCHORED, &pszError, &iOffset, nullptr));
    // Deliberate: the first %s is the value, whatever the words promise. Pinned by
    // RegEx.SomeSchemaFormsAreRefusedAfterTranslation.
    if (!pPattern)
        throw CQnException(
            FormatString("Invalid Regular Expression: %s Error: '%s'", value.c_str(), pszError));
    return pPattern;
}

// One text against one compiled pattern. The results are those of pcre_exec.
struct Match
{
    const pcre* pPattern;
    const char* pszText;
    int iLength;
    std::vector<int>& vecOffsets;

    int Run(const pcre_extra* pExtra) const
    {
        return pcre_exec(pPattern, pExtra, pszText, iLength, 0, 0, vecOffsets.data(),
                         static_cast<int>(vecOffsets.size()));
    }

    int Interpret(std::size_t uLevels) const
    {
        pcre_extra extra = {};
        extra.flags = PCRE_EXTRA_MATCH_LIMIT_RECURSION;
        extra.match_limit_recursion = uLevels;
        return Run(&extra);
    }

    // Compiled code keeps to a stack of its own, whatever the length of the text. False if there
    // is none for this pattern or on this machine.
    bool RunCompiled(int& iResult) const
    {
        const char* pszError = nullptr;
        const StudyPtr pStudy(pcre_study(pPattern, PCRE_STUDY_JIT_COMPILE, &pszError));
        int iCompiled = 0;
        if (!pStudy || pcre_fullinfo(pPattern, pStudy.get(), PCRE_INFO_JIT, &iCompiled) != 0 ||
            !iCompiled)
            return false;
        const std::size_t uWanted =
            kJitStackBase + static_cast<std::size_t>(iLength) * kJitStackPerByte;
        const JitStackPtr pStack(pcre_jit_stack_alloc(
            static_cast<int>(kJitStackStart), static_cast<int>(std::min(uWanted, kJitStackMax))));
        if (!pStack)
            return false;
        pcre_assign_jit_stack(pStudy.get(), nullptr, pStack.get());
        iResult = Run(pStudy.get());
        return true;
    }

    // Never needs more stack than this thread has left: the interpreter, which is quick to start,
    // as deep as is cheap; then compiled code; then the interpreter as deep as it may go.
    int Execute() const
    {
        const std::size_t uLeft = StackLeft();
        const std::size_t uLevels =
            uLeft > kStackReserve ? (uLeft - kStackReserve) / kBytesPerLevel : 1;
        int iResult = Interpret(std::min(uLevels, kCheapLevels));
        if (iResult == PCRE_ERROR_RECURSIONLIMIT && !RunCompiled(iResult) && uLevels > kCheapLevels)
            iResult = Interpret(uLevels);
        return iResult;
    }
};

} // namespace

bool TestRegEx(std::string pattern, std::string value)
{
    Translate(pattern);
    const PatternPtr pPattern = Compile(pattern, value);

    int iCaptures = 0;
    pcre_fullinfo(pPattern.get(), nullptr, PCRE_INFO_CAPTURECOUNT, &iCaptures);
    std::vector<int> vecOffsets(3 * (static_cast<std::size_t>(iCaptures) + 1));

    const CBinaryData utf8 = CEncoder::LocalCodePageToUtf8Binary(value.c_str());
    const char* pszText = "";
    std::size_t uLength = 0;
    if (utf8.GetLength() != 0) {
        pszText = reinterpret_cast<const char*>(utf8.GetData());
        uLength = strnlen(pszText, utf8.GetLength());
    }
    if (uLength > INT_MAX)
        return false;

    const int iLength = static_cast<int>(uLength);
    const int iResult = Match{pPattern.get(), pszText, iLength, vecOffsets}.Execute();
    // The engine's $ also matches ahead of a final line feed, which would be left over then.
    return iResult > 0 && vecOffsets[0] == 0 && vecOffsets[1] == iLength;
}

} // namespace QnXmlLib16
