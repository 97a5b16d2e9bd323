// The framework's scalar types and status codes, on the standard library.
#pragma once
#include <znmt64/Config.h>

#include <cstddef>
#include <cstdint>

typedef int BOOL;
typedef std::uint8_t BYTE;
typedef std::uint16_t WORD;
typedef std::uint32_t DWORD;
typedef std::uint32_t UINT;
typedef std::int32_t LONG;
typedef std::uint32_t ULONG;
typedef std::int64_t LONGLONG;
typedef std::uint64_t ULONGLONG;
typedef std::int64_t INT_PTR;
typedef std::uint64_t UINT_PTR;
typedef std::uint64_t DWORD_PTR;
typedef std::uint64_t ULONG_PTR;
typedef std::int16_t SHORT;
typedef std::uint16_t USHORT;
typedef char CHAR;
typedef int INT;
typedef float FLOAT;
typedef double DOUBLE;
typedef std::int32_t HRESULT;
typedef char TCHAR;
typedef char* LPTSTR;
typedef const char* LPCTSTR;
typedef const char* LPCSTR;
typedef void* LPVOID;
typedef BYTE* LPBYTE;

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif

// Status codes keep the framework's bit patterns.
constexpr HRESULT S_OK = 0;
constexpr HRESULT S_FALSE = 1;
constexpr HRESULT E_NOINTERFACE = static_cast<HRESULT>(0x80004002u);
constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80004003u);
constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005u);
constexpr HRESULT E_UNEXPECTED = static_cast<HRESULT>(0x8000FFFFu);
constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000Eu);
constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057u);
constexpr HRESULT DISP_E_BADVARTYPE = static_cast<HRESULT>(0x80020008u);
constexpr HRESULT DISP_E_PARAMNOTFOUND = static_cast<HRESULT>(0x80020004u);
constexpr HRESULT DISP_E_BADINDEX = static_cast<HRESULT>(0x8002000Bu);
constexpr HRESULT DISP_E_PARAMNOTOPTIONAL = static_cast<HRESULT>(0x8002000Fu);

constexpr bool SUCCEEDED(HRESULT hr) { return hr >= 0; }
constexpr bool FAILED(HRESULT hr) { return hr < 0; }
