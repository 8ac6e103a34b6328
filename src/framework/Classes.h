#pragma once
// Persistent objects, components, lists, collections, string lists and streams.

#include "Persistent.h"
#include "Components.h"
#include "Collections.h"
#include "Lists.h"
#include "Streams.h"
#include "StringLists.h"
