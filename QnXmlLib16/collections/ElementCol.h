#pragma once

// CElement and CElementCol hold each other and are declared together.
#include "QnXmlLib16/collections/Element.h"
