# fish completion for morlik-cli.

# Offers the folders, and the files with one of the endings given, in any case of letters.
function __morlik_cli_files
    set -l endings (string join '|' (string replace -a . '\\.' -- $argv))
    for file in (__fish_complete_path (commandline -ct))
        set -l name (string split \t -- $file)[1]
        if string match -q '*/' -- $name; or string match -qir "($endings)\$" -- $name
            echo $file
        end
    end
end

# Whether no file stands yet behind the command.
function __morlik_cli_first
    test (count (commandline -opc)) -le 2
end

set -l levels .phd .tub .tr2 .tr4 .trc


complete -c morlik-cli -f
complete -c morlik-cli -l help -d 'show how it is used'
complete -c morlik-cli -n __fish_use_subcommand -l version -d 'show the version'
complete -c morlik-cli -n __fish_use_subcommand -a convert -d 'convert levels to object sets'
complete -c morlik-cli -n __fish_use_subcommand -a info -d 'tell what is in files'
complete -c morlik-cli -n __fish_use_subcommand -a sheet -d 'write the texture sheet of a level'
complete -c morlik-cli -n __fish_use_subcommand -a sounds -d 'write the sounds as WAV files'
complete -c morlik-cli -n __fish_use_subcommand -a picture -d 'draw an object'
complete -c morlik-cli -n __fish_use_subcommand -a animate -d 'draw an animation'
complete -c morlik-cli -n __fish_use_subcommand -a contact -d 'draw all objects'
complete -c morlik-cli -n __fish_use_subcommand -a gltf -d 'write objects as glTF'
complete -c morlik-cli -n __fish_use_subcommand -a check -d 'read object sets back and verify them'
complete -c morlik-cli -n __fish_use_subcommand -a find -d 'tell which files have an object'
complete -c morlik-cli -n __fish_use_subcommand -a gallery -d 'make pages that show all objects'

# offer COMMANDS OPTIONS...: the options behind these commands.
function __morlik_cli_offer
    set -l words $argv[1]
    complete -c morlik-cli -n "__fish_seen_subcommand_from $words" $argv[2..]
end

__morlik_cli_offer convert -a "(__morlik_cli_files $levels)"
__morlik_cli_offer convert -s o -x -a '(__morlik_cli_files .was)' -d 'name of the set'
__morlik_cli_offer convert -s d -x -a '(__fish_complete_directories)' -d 'folder for the sets'
__morlik_cli_offer convert -l main-sfx -x -a 'auto (__morlik_cli_files .sfx)' -d 'take sounds from'
__morlik_cli_offer convert -l objects -r -d 'take these objects alone'
__morlik_cli_offer convert -l without -r -d 'leave these objects out'
__morlik_cli_offer convert -l fit -d 'leave out what has the most textures'
__morlik_cli_offer convert -l all-sounds -d 'keep sounds that no chosen object makes'
__morlik_cli_offer convert -l update-horizon -d 'make the clouds visible behind a horizon'
__morlik_cli_offer convert -l export-sprites -d 'take the sprites along'
__morlik_cli_offer convert -l skip-existing -d 'leave out levels whose set is there'
__morlik_cli_offer convert -l log -x -a '(__morlik_cli_files .log .txt)' -d 'write a log'
__morlik_cli_offer convert -l timings -d 'tell where the time went'
__morlik_cli_offer 'convert info check find gallery' -s r -l recursive -d 'take the files below folders'
__morlik_cli_offer 'convert info check find gallery' -s j -l jobs -x -a '(seq 16)' -d 'files at a time'
__morlik_cli_offer 'convert info check find gallery' -l json -d 'as JSON, at the end'
__morlik_cli_offer 'convert info check find gallery' -l json-lines -d 'as JSON, a line for each file'
__morlik_cli_offer 'convert check find gallery' -s q -l quiet -d 'tell nothing of what is good'
__morlik_cli_offer info -a "(__morlik_cli_files $levels .sfx .prj)"
__morlik_cli_offer check -a '(__morlik_cli_files .was)'
__morlik_cli_offer check -l game -x -a '1 2 3 4 5' -d 'game of the sets'
__morlik_cli_offer find -a "(__morlik_cli_files $levels .was)"
__morlik_cli_offer gallery -a "(__morlik_cli_files $levels)"
__morlik_cli_offer gallery -s d -x -a '(__fish_complete_directories)' -d 'folder of the gallery'
__morlik_cli_offer gallery -l animations -x -d 'first animations that get a moving picture'
__morlik_cli_offer gallery -l no-gltf -d 'leave out the glTF files'
__morlik_cli_offer gallery -l sets -d 'add an object set of each object alone'
__morlik_cli_offer gallery -l main-sfx -x -a 'auto (__morlik_cli_files .sfx)' -d 'take sounds from'
__morlik_cli_offer find -l sound -x -d 'look for a sound, by its slot'
__morlik_cli_offer find -l same-as -x -a "(__morlik_cli_files $levels .was)" -d 'LEVEL:NAME'
complete -c morlik-cli -n '__fish_seen_subcommand_from sheet; and __morlik_cli_first' \
    -a "(__morlik_cli_files $levels)"
complete -c morlik-cli -n '__fish_seen_subcommand_from sheet; and not __morlik_cli_first' \
    -a '(__morlik_cli_files .tga .png)'
complete -c morlik-cli -n '__fish_seen_subcommand_from sounds; and __morlik_cli_first' \
    -a "(__morlik_cli_files $levels .sfx)"
complete -c morlik-cli -n '__fish_seen_subcommand_from sounds; and not __morlik_cli_first' \
    -a '(__fish_complete_directories)'
complete -c morlik-cli -n '__fish_seen_subcommand_from picture animate contact; and __morlik_cli_first' \
    -a "(__morlik_cli_files $levels .was)"
complete -c morlik-cli -n '__fish_seen_subcommand_from picture contact; and not __morlik_cli_first' \
    -a '(__morlik_cli_files .png)'
complete -c morlik-cli -n '__fish_seen_subcommand_from animate; and not __morlik_cli_first' \
    -a '(__morlik_cli_files .png .webp)'
__morlik_cli_offer 'picture animate' -l object -x -d 'the object, by its id or name'
__morlik_cli_offer 'picture animate' -l animation -x -d 'number of its animation'
__morlik_cli_offer 'picture animate' -l yaw -x -d 'degrees to go around it'
__morlik_cli_offer 'picture animate' -l pitch -x -d 'degrees to look down on it'
__morlik_cli_offer 'picture animate' -l zoom -x -d 'times as large'
__morlik_cli_offer 'picture animate' -l size -x -a '400x300 640x480 800x600 1920x1080' -d 'pixels'
__morlik_cli_offer 'picture animate' -l background -x -a 'none 000000 ffffff' -d 'colour'
__morlik_cli_offer 'picture animate' -l smooth -d 'blend the pixels of the textures'
__morlik_cli_offer 'picture animate' -l wireframe -d 'the edges of the faces alone'
__morlik_cli_offer picture -l static -d 'it is a static mesh'
__morlik_cli_offer picture -l frame -x -d 'number of the frame'
complete -c morlik-cli -n '__fish_seen_subcommand_from gltf; and __morlik_cli_first' \
    -a "(__morlik_cli_files $levels .was)"
__morlik_cli_offer gltf -s d -x -a '(__fish_complete_directories)' -d 'folder for the files'
__morlik_cli_offer gltf -s o -x -a '(__morlik_cli_files .glb .gltf)' -d 'all in one file'
__morlik_cli_offer gltf -l objects -x -d 'take these objects alone'
__morlik_cli_offer gltf -l without -x -d 'leave these objects out'
__morlik_cli_offer gltf -l gltf -d 'write .gltf, .bin and .png'
__morlik_cli_offer gltf -l skin -d 'moveables as one mesh on bones'
__morlik_cli_offer gltf -l lit -d 'materials that take light'
__morlik_cli_offer gltf -l smooth -d 'blend the pixels of the textures'
__morlik_cli_offer gltf -l double-sided -d 'show faces from behind, too'
__morlik_cli_offer gltf -l scale -x -d 'metres of a sector'
__morlik_cli_offer contact -l columns -x -d 'pictures in a row'
__morlik_cli_offer contact -l size -x -d 'pixels of a picture'
__morlik_cli_offer contact -l moveables -d 'the moveables alone'
__morlik_cli_offer contact -l statics -d 'the static meshes alone'
__morlik_cli_offer contact -l sprites -d 'the sprites alone'
