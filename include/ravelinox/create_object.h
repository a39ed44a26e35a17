/* Creates an object by its program identifier, as the user's registry of components has it; for
 * hosts in C and C++. Link with the dynamic loader's library. */
#ifndef RAVELINOX_CREATE_OBJECT_H
#define RAVELINOX_CREATE_OBJECT_H

#include <dlfcn.h>
#include <stdio.h>

#include "ravelinox/automation.h"

/* The value of `key` in the registry, cut at `size`; 0 when it is not there. */
static inline int rlx_registry_value(const char* key, char* value, size_t size) {
  char line[4096];
  const char* data = getenv("XDG_DATA_HOME");
  const char* home = getenv("HOME");
  const int has_data = data && *data == '/';
  if (!has_data && (!home || *home != '/')) return 0;
  snprintf(line, sizeof line, "%s%s/ravelinox/registry", has_data ? data : home,
           has_data ? "" : "/.local/share");
  FILE* registry = fopen(line, "re");
  if (!registry) return 0;
  int found = 0;
  while (!found && fgets(line, sizeof line, registry)) {
    char* separator = strstr(line, " = ");
    if (!separator) continue;
    *separator = '\0';
    if (strcmp(line, key) != 0) continue;
    separator[strcspn(separator + 3, "\n") + 3] = '\0';
    found = snprintf(value, size, "%s", separator + 3) < (int)size;
  }
  fclose(registry);
  return found;
}

/* From "{9E73ADD0-DA67-4714-BA86-7C3205EAF716}"; 0 for anything else. */
static inline int rlx_guid_from_text(const char* text, rlx_guid* id) {
  unsigned d1, d2, d3, d[8];
  if (sscanf(text, "{%8x-%4x-%4x-%2x%2x-%2x%2x%2x%2x%2x%2x}", &d1, &d2, &d3, &d[0], &d[1], &d[2],
             &d[3], &d[4], &d[5], &d[6], &d[7]) != 11)
    return 0;
  id->data1 = d1;
  id->data2 = (uint16_t)d2;
  id->data3 = (uint16_t)d3;
  for (int at = 0; at < 8; ++at) id->data4[at] = (uint8_t)d[at];
  return 1;
}

/* An object of the class in the library `file`, which stays loaded. */
static inline rlx_result rlx_create_from_file(const char* file, const rlx_guid* class_id,
                                              const rlx_guid* id, void** object) {
  static const rlx_guid factory_id = {1, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
  rlx_result (*get_class_object)(const rlx_guid*, const rlx_guid*, void**);
  *object = NULL;
  void* library = dlopen(file, RTLD_NOW | RTLD_LOCAL);
  void* entry = library ? dlsym(library, "DllGetClassObject") : NULL;
  if (!entry) return RLX_REGDB_E_CLASSNOTREG;
  memcpy(&get_class_object, &entry, sizeof entry);
  void* made = NULL;
  rlx_result result = get_class_object(class_id, &factory_id, &made);
  if (result < 0) return result;
  rlx_class_factory* factory = (rlx_class_factory*)made;
  result = factory->slots->CreateInstance(factory, NULL, id, object);
  factory->slots->Release(factory);
  return result;
}

/* An object with the interface `id` of the class that is registered as `program_id`, such as
 * "Ravelinox.cmdl1"; RLX_REGDB_E_CLASSNOTREG when it is not, or its library cannot be loaded. */
static inline rlx_result rlx_create_object(const char* program_id, const rlx_guid* id,
                                           void** object) {
  char key[512], class_text[64], file[4096];
  rlx_guid class_id;
  *object = NULL;
  snprintf(key, sizeof key, "%s\\CLSID", program_id);
  if (!rlx_registry_value(key, class_text, sizeof class_text) ||
      !rlx_guid_from_text(class_text, &class_id))
    return RLX_REGDB_E_CLASSNOTREG;
  snprintf(key, sizeof key, "CLSID\\%s\\InprocServer32", class_text);
  if (!rlx_registry_value(key, file, sizeof file)) return RLX_REGDB_E_CLASSNOTREG;
  return rlx_create_from_file(file, &class_id, id, object);
}

#endif
