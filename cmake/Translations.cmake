# Translations: the texts of some targets are a catalogue with a name. Its German texts are kept beside the sources, in
# <name>_de.ts; what the sources ask for is collected from them when something is built that needs to know.

add_custom_target(update_translations) # refreshes the kept files of all catalogues; only when somebody asks for it

set(HK_LUPDATE_OPTIONS -silent -no-obsolete -locations none -source-language en_GB)

# The files of targets in which texts may stand, and the folders of the headers that tell lupdate what class a function
# belongs to.
function(hk_texts_of out_files out_folders)
    set(files)
    set(folders)
    foreach(target IN LISTS ARGN)
        get_target_property(directory ${target} SOURCE_DIR)
        get_target_property(sources ${target} SOURCES)
        foreach(source IN LISTS sources)
            get_filename_component(path "${source}" ABSOLUTE BASE_DIR "${directory}")
            if(path MATCHES "\\.(cpp|h)$" AND NOT path MATCHES "^${CMAKE_BINARY_DIR}/")
                list(APPEND files "${path}")
            elseif(path MATCHES "\\.qrc$" AND EXISTS "${path}")
                get_filename_component(folder "${path}" DIRECTORY)
                file(STRINGS "${path}" scenes REGEX "\\.qml<")
                foreach(scene IN LISTS scenes)
                    string(REGEX REPLACE ".*>([^<>]+\\.qml)<.*" "\\1" scene "${scene}")
                    list(APPEND files "${folder}/${scene}")
                endforeach()
            endif()
        endforeach()
        foreach(folder include gui/include src .)
            if(IS_DIRECTORY "${directory}/${folder}")
                list(APPEND folders "-I${directory}/${folder}")
            endif()
        endforeach()
    endforeach()
    set(${out_files} "${files}" PARENT_SCOPE)
    set(${out_folders} "${folders}" PARENT_SCOPE)
endfunction()

# hk_add_catalogue(<name> TARGETS <targets> [ALSO <targets whose headers are looked into>])
#
# For the texts of TARGETS: ${CMAKE_BINARY_DIR}/translations/<name>.ts, all of them without any translation, by the
# target <name>_texts; and the file <name>_de.ts of the folder "translations" beside the caller as part of
# update_translations.
function(hk_add_catalogue name)
    cmake_parse_arguments(ARG "" "" "TARGETS;ALSO" ${ARGN})
    hk_texts_of(files folders ${ARG_TARGETS})
    if(ARG_ALSO)
        hk_texts_of(unused more_folders ${ARG_ALSO})
        list(APPEND folders ${more_folders})
    endif()
    set(build_folder "${CMAKE_BINARY_DIR}/translations")
    set(list "${build_folder}/${name}.list")
    string(REPLACE ";" "\n" lines "${files}")
    file(GENERATE OUTPUT "${list}" CONTENT "${lines}\n")

    # Written aside first: what depends on the texts is not made again when a source changed but no text did.
    set(texts "${build_folder}/${name}.ts")
    set(fresh "${build_folder}/fresh/${name}.ts")
    add_custom_command(
        OUTPUT "${texts}"
        COMMAND "${CMAKE_COMMAND}" -E make_directory "${build_folder}/fresh"
        COMMAND "${CMAKE_COMMAND}" -E rm -f "${fresh}"
        COMMAND Qt5::lupdate ${HK_LUPDATE_OPTIONS} ${folders} "@${list}" -ts "${fresh}"
        COMMAND "${CMAKE_COMMAND}" -E copy_if_different "${fresh}" "${texts}"
        DEPENDS ${files} "${list}"
        COMMENT "Collecting the texts of ${name}"
        VERBATIM)
    add_custom_target(${name}_texts DEPENDS "${texts}")
    set_target_properties(${name}_texts PROPERTIES HK_FILES "${list}" HK_FOLDERS "${folders}")

    add_custom_target(update_${name}
        COMMAND Qt5::lupdate ${HK_LUPDATE_OPTIONS} ${folders} "@${list}"
            -target-language de -ts "${CMAKE_CURRENT_SOURCE_DIR}/translations/${name}_de.ts"
        COMMENT "Updating translations/${name}_de.ts"
        VERBATIM)
    add_dependencies(update_translations update_${name})
endfunction()

# hk_compile_texts(<file.qm> <files.ts>) makes a file that programs load.
function(hk_compile_texts compiled)
    get_filename_component(folder "${compiled}" DIRECTORY)
    get_filename_component(name "${compiled}" NAME)
    add_custom_command(
        OUTPUT "${compiled}"
        COMMAND "${CMAKE_COMMAND}" -E make_directory "${folder}"
        COMMAND Qt5::lrelease -silent ${ARGN} -qm "${compiled}"
        DEPENDS ${ARGN}
        COMMENT "Compiling ${name}"
        VERBATIM)
endfunction()

# hk_add_compiled_texts(<target> PREFIX <folder in the resources> FILES <files.qm>) compiles them into a target.
function(hk_add_compiled_texts target)
    cmake_parse_arguments(ARG "" "PREFIX" "FILES" ${ARGN})
    set(folder "${CMAKE_CURRENT_BINARY_DIR}/translations")
    set(list "${folder}/${target}_translations.qrc")
    set(source "${folder}/${target}_translations.cpp")
    set(lines)
    foreach(file IN LISTS ARG_FILES)
        get_filename_component(name "${file}" NAME)
        string(APPEND lines "        <file alias=\"${name}\">${file}</file>\n")
    endforeach()
    file(GENERATE OUTPUT "${list}" CONTENT
        "<RCC>\n    <qresource prefix=\"${ARG_PREFIX}\">\n${lines}    </qresource>\n</RCC>\n")
    add_custom_command(
        OUTPUT "${source}"
        COMMAND Qt5::rcc --name ${target}_translations --output "${source}" "${list}"
        DEPENDS "${list}" ${ARG_FILES}
        COMMENT "Compiling the translations into ${target}"
        VERBATIM)
    set_source_files_properties("${source}" PROPERTIES SKIP_AUTOGEN ON)
    target_sources(${target} PRIVATE "${source}")
endfunction()
