/* The binary face of Ravelinox.so, for C and C++ and as the reference for any other language.
 *
 * Every object is a pointer to a structure whose first word points to its table of functions; each
 * function takes the object first. Functions follow the platform's C calling convention, return a
 * result code and never raise an exception. Who gets an object, a text or a variant through an
 * out-parameter owns it: `Release`, `rlx_text_free`, `rlx_variant_clear`.
 *
 * Tables have a fixed order: the three functions of the root interface, then the four of the
 * dispatch interface, then, for the class `cmdl1`, the slots of cmdl1.h. */
#ifndef RAVELINOX_AUTOMATION_H
#define RAVELINOX_AUTOMATION_H

#include <stddef.h>
#include <stdint.h>
#include <stdlib.h>
#include <string.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Result codes: negative ones are failures. ---- */

typedef int32_t rlx_result;

enum {
  RLX_S_OK = 0,
  RLX_S_FALSE = 1,
  RLX_E_NOTIMPL = -2147467263,                 /* 0x80004001: a reserved slot */
  RLX_E_NOINTERFACE = -2147467262,             /* 0x80004002 */
  RLX_E_POINTER = -2147467261,                 /* 0x80004003: a pointer that must not be null */
  RLX_E_UNEXPECTED = -2147418113,              /* 0x8000FFFF */
  RLX_E_OUTOFMEMORY = -2147024882,             /* 0x8007000E */
  RLX_DISP_E_UNKNOWNINTERFACE = -2147352575,   /* 0x80020001: the reserved identifier is not zero */
  RLX_DISP_E_MEMBERNOTFOUND = -2147352573,     /* 0x80020003: or not usable that way */
  RLX_DISP_E_PARAMNOTFOUND = -2147352572,      /* 0x80020004: also the mark of a missing argument */
  RLX_DISP_E_TYPEMISMATCH = -2147352571,       /* 0x80020005 */
  RLX_DISP_E_UNKNOWNNAME = -2147352570,        /* 0x80020006 */
  RLX_DISP_E_BADVARTYPE = -2147352568,         /* 0x80020008: a kind that is not listed below */
  RLX_DISP_E_EXCEPTION = -2147352567,          /* 0x80020009: see rlx_exception */
  RLX_DISP_E_OVERFLOW = -2147352566,           /* 0x8002000A */
  RLX_DISP_E_BADINDEX = -2147352565,           /* 0x8002000B */
  RLX_DISP_E_BADPARAMCOUNT = -2147352562,      /* 0x8002000E */
  RLX_DISP_E_PARAMNOTOPTIONAL = -2147352561,   /* 0x8002000F */
  RLX_CLASS_E_NOAGGREGATION = -2147221232,     /* 0x80040110 */
  RLX_CLASS_E_CLASSNOTAVAILABLE = -2147221231, /* 0x80040111 */
  RLX_REGDB_E_CLASSNOTREG = -2147221164,       /* 0x80040154 */
  RLX_SELFREG_E_CLASS = -2147220991            /* 0x80040201: the registry cannot be written */
};

/* The engine's own failures arrive as 0x800A0000 plus the number for numbers below 65536 (13 is
 * 0x800A000D), and as the number itself for the data layer's (0x80040E14). */

typedef struct rlx_guid {
  uint32_t data1;
  uint16_t data2;
  uint16_t data3;
  uint8_t data4[8];
} rlx_guid;

/* ---- Counted texts: UTF-16, ended by a zero that the count leaves out. ---- */

/* Points at the first unit. The four bytes before it hold the length in bytes; the block, from the
 * C library's malloc, begins eight bytes before it. Null stands for the empty text. */
typedef uint16_t* rlx_text;

static inline uint32_t rlx_text_length(const uint16_t* text) { /* in units */
  uint32_t bytes = 0;
  if (text) memcpy(&bytes, (const char*)text - sizeof bytes, sizeof bytes);
  return bytes / 2;
}

/* A text of `length` units, copied from `units` unless that is null; null without memory. */
static inline rlx_text rlx_text_new(const uint16_t* units, uint32_t length) {
  const size_t bytes = (size_t)length * 2;
  if (bytes > UINT32_MAX - 16) return NULL;
  char* block = (char*)calloc(1, bytes + 8 + 2);
  if (!block) return NULL;
  const uint32_t count = (uint32_t)bytes;
  memcpy(block + 4, &count, sizeof count);
  if (units) memcpy(block + 8, units, bytes);
  return (rlx_text)(void*)(block + 8);
}

static inline void rlx_text_free(rlx_text text) {
  if (text) free((char*)text - 8);
}

/* ---- Interfaces ---- */

typedef struct rlx_variant rlx_variant;
typedef struct rlx_arguments rlx_arguments;
typedef struct rlx_exception rlx_exception;
typedef struct rlx_unknown rlx_unknown;
typedef struct rlx_dispatch rlx_dispatch;
typedef struct rlx_class_factory rlx_class_factory;
typedef struct rlx_error_info rlx_error_info;

/* The root of every object. {00000000-0000-0000-C000-000000000046} */
typedef struct rlx_unknown_slots {
  rlx_result (*QueryInterface)(rlx_unknown* self, const rlx_guid* id, void** object);
  uint32_t (*AddRef)(rlx_unknown* self);
  uint32_t (*Release)(rlx_unknown* self);
} rlx_unknown_slots;

struct rlx_unknown {
  const rlx_unknown_slots* slots;
};

/* Calls by name and by identifier. {00020400-0000-0000-C000-000000000046} */
typedef struct rlx_dispatch_slots {
  rlx_result (*QueryInterface)(rlx_dispatch* self, const rlx_guid* id, void** object);
  uint32_t (*AddRef)(rlx_dispatch* self);
  uint32_t (*Release)(rlx_dispatch* self);

  /* There is no type information at run time: the count is 0, and asking for it fails with
   * RLX_DISP_E_BADINDEX. Ravelinox.idl describes the class. */
  rlx_result (*GetTypeInfoCount)(rlx_dispatch* self, uint32_t* count);
  rlx_result (*GetTypeInfo)(rlx_dispatch* self, uint32_t index, uint32_t locale, void** info);

  /* The identifiers of a member and, after it, of its parameters, in any letter case; -1 and
   * RLX_DISP_E_UNKNOWNNAME for a name that is not there. `reserved` is the zero identifier. */
  rlx_result (*GetIDsOfNames)(rlx_dispatch* self, const rlx_guid* reserved, uint16_t** names,
                              uint32_t count, uint32_t locale, int32_t* ids);

  /* Calls a method, reads or writes a property. `result` and `failure` may be null. With
   * RLX_DISP_E_EXCEPTION the failure is in `failure`; with a mismatch, an overflow, an unknown or
   * missing argument `wrong_argument` is its index in `arguments->values`. */
  rlx_result (*Invoke)(rlx_dispatch* self, int32_t member, const rlx_guid* reserved,
                       uint32_t locale, uint16_t use, rlx_arguments* arguments, rlx_variant* result,
                       rlx_exception* failure, uint32_t* wrong_argument);
} rlx_dispatch_slots;

struct rlx_dispatch {
  const rlx_dispatch_slots* slots;
};

/* Makes objects of one class. {00000001-0000-0000-C000-000000000046} */
typedef struct rlx_class_factory_slots {
  rlx_result (*QueryInterface)(rlx_class_factory* self, const rlx_guid* id, void** object);
  uint32_t (*AddRef)(rlx_class_factory* self);
  uint32_t (*Release)(rlx_class_factory* self);
  rlx_result (*CreateInstance)(rlx_class_factory* self, rlx_unknown* outer, const rlx_guid* id,
                               void** object);
  rlx_result (*LockServer)(rlx_class_factory* self, int32_t lock);
} rlx_class_factory_slots;

struct rlx_class_factory {
  const rlx_class_factory_slots* slots;
};

/* What the last failed call of an object said, for calls through slots, which return a code alone:
 * ask the object for it. {1CF2B120-547D-101B-8E65-08002B2BD119} */
typedef struct rlx_error_info_slots {
  rlx_result (*QueryInterface)(rlx_error_info* self, const rlx_guid* id, void** object);
  uint32_t (*AddRef)(rlx_error_info* self);
  uint32_t (*Release)(rlx_error_info* self);
  rlx_result (*GetGUID)(rlx_error_info* self, rlx_guid* id);
  rlx_result (*GetSource)(rlx_error_info* self, rlx_text* source);
  rlx_result (*GetDescription)(rlx_error_info* self, rlx_text* description);
  rlx_result (*GetHelpFile)(rlx_error_info* self, rlx_text* file);
  rlx_result (*GetHelpContext)(rlx_error_info* self, uint32_t* context);
} rlx_error_info_slots;

struct rlx_error_info {
  const rlx_error_info_slots* slots;
};

/* ---- Variants ---- */

enum {
  RLX_EMPTY = 0,
  RLX_NULL = 1,
  RLX_I2 = 2,
  RLX_I4 = 3,
  RLX_R4 = 4,
  RLX_R8 = 5,
  RLX_DATE = 7, /* days since 30 December 1899, in `real64` */
  RLX_TEXT = 8,
  RLX_DISPATCH = 9,
  RLX_ERROR = 10,   /* RLX_DISP_E_PARAMNOTFOUND: an optional argument left out */
  RLX_BOOL = 11,    /* 16 bits: -1 is True, 0 is False */
  RLX_VARIANT = 12, /* with RLX_BYREF only */
  RLX_UNKNOWN = 13,
  RLX_I1 = 16,  /* the whole numbers from here on are understood and never given */
  RLX_UI1 = 17, /* but for this one, which the engine has */
  RLX_UI2 = 18,
  RLX_UI4 = 19,
  RLX_I8 = 20,
  RLX_UI8 = 21,
  RLX_INT = 22,
  RLX_UINT = 23,
  RLX_BYREF = 0x4000 /* joined with a kind: `reference` points at the value */
};

typedef union rlx_variant_value {
  int8_t int8;
  uint8_t uint8;
  int16_t int16; /* RLX_BOOL too */
  uint16_t uint16;
  int32_t int32; /* RLX_ERROR too */
  uint32_t uint32;
  int64_t int64;
  uint64_t uint64;
  float real32;
  double real64;
  rlx_text text;
  rlx_unknown* unknown;
  rlx_dispatch* dispatch;
  void* reference;
  void* two_words[2];
} rlx_variant_value;

struct rlx_variant {
  uint16_t kind;
  uint16_t reserved[3];
  rlx_variant_value value;
};

/* Frees what a variant owns and leaves it empty. */
static inline void rlx_variant_clear(rlx_variant* variant) {
  if (variant->kind == RLX_TEXT) rlx_text_free(variant->value.text);
  if ((variant->kind == RLX_DISPATCH || variant->kind == RLX_UNKNOWN) && variant->value.unknown)
    variant->value.unknown->slots->Release(variant->value.unknown);
  memset(variant, 0, sizeof *variant);
}

/* ---- Calls by identifier ---- */

enum { /* `use`; the first two may be joined */
       RLX_USE_METHOD = 1,
       RLX_USE_GET = 2,
       RLX_USE_PUT = 4,
       RLX_USE_PUT_REFERENCE = 8
};

enum { RLX_ID_VALUE = 0, RLX_ID_UNKNOWN = -1, RLX_ID_PUT = -3 };

/* Positional arguments stand in reverse order behind the named ones. The value that a property is
 * given is named RLX_ID_PUT. */
struct rlx_arguments {
  rlx_variant* values;
  int32_t* names;
  uint32_t count;
  uint32_t named_count;
};

/* A failure of the engine; the texts are the caller's to free. */
struct rlx_exception {
  uint16_t code;
  uint16_t reserved;
  rlx_text source;
  rlx_text description;
  rlx_text help_file;
  uint32_t help_context;
  void* reserved_pointer;
  rlx_result (*deferred)(rlx_exception* failure); /* always null */
  rlx_result result;                              /* the number, as said above */
};

/* ---- The library's entry points ---- */

/* Gives the class factory of `cmdl1`, or RLX_CLASS_E_CLASSNOTAVAILABLE for another class. */
rlx_result DllGetClassObject(const rlx_guid* class_id, const rlx_guid* id, void** object);

/* RLX_S_OK when no object is alive and no lock is held, else RLX_S_FALSE. */
rlx_result DllCanUnloadNow(void);

/* Writes or removes this library's entries in the user's registry of components, the file
 * "ravelinox/registry" in XDG_DATA_HOME (or .local/share in the home folder). */
rlx_result DllRegisterServer(void);
rlx_result DllUnregisterServer(void);

#ifdef __cplusplus
}
#endif

#endif
