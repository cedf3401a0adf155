#pragma once

// The base of element metadata and its whole family.

#include "QnXmlLib16/binding/ElementInfoAll.h"
#include "QnXmlLib16/binding/ElementInfoBase.h"
#include "QnXmlLib16/binding/ElementInfoChoice.h"
#include "QnXmlLib16/binding/ElementInfoSeq.h"
