# Writes a definition of each function of GL/gl.h, and of those of GL/glu.h that draw or set up, as
# lines `FUNCTION(false, void, glBegin, (GLenum mode), Primitive{mode})` for GlFunctions.cpp: whether
# it asks, its result, name and parameters, and how its arguments are written down.
set(glu_functions "gluPerspective|gluOrtho2D|gluLookAt|gluPickMatrix|gluBuild[12]DMipmaps|gluScaleImage|gluNewQuadric|gluDeleteQuadric|gluQuadric(DrawStyle|Normals|Orientation|Texture)|gluSphere|gluCylinder|gluDisk|gluPartialDisk")

# What the type of an argument does not tell: function, parameter, and what stands for it.
set(gl_meanings
  "gl(Begin|DrawArrays|DrawElements) mode Primitive{mode}"
  "gl(BlendFunc|StencilOp) [a-z]+ Factor{@}"
  "glStencil(Func|Mask) mask Mask{mask}"
  "glLineStipple pattern Mask{pattern}"
  "glClipPlane equation Values(equation,4)"
  "gl(Load|Mult)Matrix[fd] m Values(m,16)"
  "glDeleteTextures textures Values(textures,n)"
  "glMaterial[fi]v params Settings(params,MaterialSize(pname))"
  "glLight[fi]v params Settings(params,LightSize(pname))"
  "glLightModel[fi]v params Settings(params,SizeIfVector(pname,GL_LIGHT_MODEL_AMBIENT))"
  "glFog[fi]v params Settings(params,SizeIfVector(pname,GL_FOG_COLOR))"
  "glTexParameter[fi]v params Settings(params,SizeIfVector(pname,GL_TEXTURE_BORDER_COLOR))"
  "glTexEnv[fi]v params Settings(params,SizeIfVector(pname,GL_TEXTURE_ENV_COLOR))"
  "glTexGen[fid]v params Settings(params,pname==GL_TEXTURE_GEN_MODE?1:4)"
  "gl(Material|Light|LightModel|Fog|TexParameter|TexEnv|TexGen)[fid] param EnumOr{param}"
  "glu?(TexImage|Build)[12]D(Mipmaps)? internal[fF]ormat EnumOr{@}")

# Of a parameter, `const GLfloat *v`.
function(written_down function type name result)
  foreach(meaning IN LISTS gl_meanings)
    string(REPLACE " " ";" meaning "${meaning}")
    list(GET meaning 0 functions)
    list(GET meaning 1 names)
    if(function MATCHES "^${functions}$" AND name MATCHES "^${names}$")
      list(GET meaning 2 text)
      string(REPLACE "@" "${name}" text "${text}")
      set(${result} "${text}" PARENT_SCOPE)
      return()
    endif()
  endforeach()
  if(type MATCHES "[*]" AND function MATCHES "([1-4])(b|s|i|f|d|ub|us|ui)v$")
    set(text "Values(${name},${CMAKE_MATCH_1})")
  elseif(type MATCHES "[*]")
    set(text "Memory(${name})")
  elseif(type MATCHES "GLenum")
    set(text "Enum{${name}}")
  elseif(type MATCHES "GLbitfield")
    set(text "Bits{${name}}")
  elseif(type MATCHES "GLboolean")
    set(text "Boolean{${name}}")
  else()
    set(text "${name}")
  endif()
  set(${result} "${text}" PARENT_SCOPE)
endfunction()

set(gl_functions "")
foreach(header IN ITEMS gl glu)
  file(READ ${gl_header_folder}/GL/${header}.h text)
  string(REGEX REPLACE "[ \t\r\n]+" " " text "${text}")
  string(REGEX MATCHALL "GLAPI [A-Za-z0-9_* ]*GLAPIENTRY glu?[A-Z][A-Za-z0-9]* ?[(][^()]*[)]" prototypes "${text}")
  foreach(prototype IN LISTS prototypes)
    if(NOT prototype MATCHES "^GLAPI (.*[^ ]) *GLAPIENTRY (glu?[A-Z][A-Za-z0-9]*) ?[(] ?([^()]*)[)]$")
      continue()
    endif()
    set(result "${CMAKE_MATCH_1}")
    set(function "${CMAKE_MATCH_2}")
    set(parameters "${CMAKE_MATCH_3}")
    if(function MATCHES "(ARB|EXT|MESA|ATI|SGI|NV)$" OR
       (header STREQUAL "glu" AND NOT function MATCHES "^(${glu_functions})$"))
      continue()
    endif()
    string(REGEX REPLACE "^ *void *$" "" parameters "${parameters}")
    set(arguments "")
    string(REPLACE "," ";" each "${parameters}")
    foreach(parameter IN LISTS each)
      string(REGEX MATCH "^(.*[ *])([A-Za-z0-9_]+)(\\[[0-9]+\\])? *$" whole "${parameter}")
      set(type "${CMAKE_MATCH_1}${CMAKE_MATCH_3}")
      set(name "${CMAKE_MATCH_2}")
      string(REGEX REPLACE "\\[.*" "*" type "${type}")
      written_down(${function} "${type}" "${name}" argument)
      string(APPEND arguments ", ${argument}")
    endforeach()
    set(asks false)
    if(function MATCHES "^gl(Get|Is)")
      set(asks true)
    endif()
    string(APPEND gl_functions "FUNCTION(${asks}, ${result}, ${function}, (${parameters})${arguments})\n")
  endforeach()
endforeach()
file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/gl/GlFunctions.inc CONTENT "${gl_functions}" @ONLY)
