#!/usr/bin/env python3
"""Compares every include with src/floors.txt.   floors.py [REPOSITORY]

Ends with 1 when a file includes what its floor forbids, when a folder of src/ is not listed or holds more files than a
reader finds a thing in, or when the list names a folder that is not below."""
import os
import re
import sys

MOST_FILES = 24
SOURCES = re.compile(r'.*\.(h|cpp|mm|swift)$')


def read_floors(path):
    """The folders in their order, each with the folders it may include, and what is wrong with the list itself."""
    allowed, faults = {}, []
    for number, line in enumerate(open(path), 1):
        if not line.strip() or line.startswith('#'):
            continue
        folder, _, names = line.partition(':')
        below = set()
        for name in names.split():
            meant = {f for f in allowed if f == name or f.startswith(name + '/')}
            if not meant and name != folder:
                faults.append(f'{path}:{number}: {folder} names {name}, which is not listed above it')
            below |= meant
        allowed[folder] = below | {folder}
    return allowed, faults


def floor_of(folder, allowed):
    """The nearest listed folder around this one: rooms of tools and tests are listed together."""
    while folder and folder not in allowed:
        folder = os.path.dirname(folder)
    return folder


def sources(top):
    for root in ('src', 'tools', 'tests', 'bench'):
        for path, _, names in os.walk(os.path.join(top, root)):
            folder = os.path.relpath(path, os.path.join(top, 'src') if root == 'src' else top)
            yield root, folder, [os.path.join(path, name) for name in sorted(names) if SOURCES.match(name)]


def faults_of(top):
    allowed, faults = read_floors(os.path.join(top, 'src/floors.txt'))
    for root, folder, paths in sources(top):
        if root == 'src' and paths and folder not in allowed:
            faults.append(f'{folder}: not listed in src/floors.txt')
            continue
        if root == 'src' and len(paths) > MOST_FILES:
            faults.append(f'{folder}: {len(paths)} files, more than {MOST_FILES}')
        floor = floor_of(folder, allowed)
        for path in paths:
            for number, line in enumerate(open(path), 1):
                include = re.match(r'#(?:include|import) "([^"]+)/[^"/]+"', line)
                if include and floor_of(include[1], allowed) not in allowed[floor]:
                    faults.append(f'{os.path.relpath(path, top)}:{number}: {floor} may not include {include[1]}')
    return faults


if __name__ == '__main__':
    found = faults_of(sys.argv[1] if len(sys.argv) > 1 else os.getcwd())
    print('\n'.join(found) or 'every include goes down')
    sys.exit(1 if found else 0)
