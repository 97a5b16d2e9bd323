// Everything of the framework layer in one include.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/platform/Types.h>
#include <znmt64/platform/Com.h>
#include <znmt64/platform/CString.h>
#include <znmt64/platform/CObject.h>
#include <znmt64/platform/CException.h>
#include <znmt64/platform/CFile.h>
#include <znmt64/platform/CArchive.h>
#include <znmt64/platform/CArray.h>
