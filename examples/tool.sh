#!/usr/bin/env bash
# Runs the commands that docs/tool.md shows, each followed by its output and an empty line.
# Usage: tool.sh KIV PROPS
set -euo pipefail
program=$(realpath "$1") props=$(realpath "$2") sources=$PWD place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
cd "$place"
cp "$sources/workshop.gltf" .
cp "$props" props.so
sed 's/"Vice"/"Clamp"/; s/"intensity": [0-9.]*/"intensity": 12/' workshop.gltf >newer.gltf
kiv() { "$program" "$@"; }

while IFS= read -r line; do
    echo "\$ $line"
    eval "$line" 2>&1 || echo "(exit status $?)"
    echo
done <<'END'
kiv info workshop.gltf | tail -n 20
kiv tree --depth 3 workshop.gltf
kiv show workshop.gltf Workshop:View | grep -A 6 ^camera
kiv show --columns visible,translation workshop.gltf '**/Leg*'
kiv find --material '*' --min-size 1 workshop.gltf
kiv find --type lights workshop.gltf
kiv diff workshop.gltf newer.gltf
kiv shell workshop.gltf -c 'find --lights; select @found; hide @; history; save tour.json'
kiv shell -c 'help mount'
kiv shell workshop.gltf -c 'watch --record=day.json; make group set; hide workshop/Workshop/Lamp'
kiv replay day.json workshop.gltf
kiv inspect workshop.gltf | grep -A 1 ^mounts
kiv check --only commands ./props.so
kiv --plugin ./props.so plugins
kiv completion bash | head -n 1
kiv tree --isolated=10 --depth 0 workshop.gltf
kiv tree --detph 3 workshop.gltf
END
