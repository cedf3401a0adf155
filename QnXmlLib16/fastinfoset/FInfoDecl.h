#pragma once

namespace QnXmlLib16 {

// The XML declaration that a Fast Infoset document carries ahead of its binary part, one for each
// declaration that ITU-T X.891 allows (version, encoding 'finf', standalone).
enum FInfoDecl : int
{
    FInfoDecl_None = 0, // no declaration: the document starts with the binary identification
    FInfoDecl_Finf = 1,
    FInfoDecl_FinfStandaloneYes = 2,
    FInfoDecl_FinfStandaloneNo = 3,
    FInfoDecl_Version10 = 4,
    FInfoDecl_Version10StandaloneYes = 5,
    FInfoDecl_Version10StandaloneNo = 6,
    FInfoDecl_Version11 = 7,
    FInfoDecl_Version11StandaloneYes = 8,
    FInfoDecl_Version11StandaloneNo = 9
};

} // namespace QnXmlLib16
