# Windows Mobile devices come in two kinds. Since version 5 they have two soft keys: a menu of one command is
# a key without a list; one of several commands opens its list. The program takes over the second key.
$ mkdir -p 'My Documents/Quorin' && printf 'NAME|INFFILE\nSoil Meter|soil.txt\n' > 'My Documents/Quorin/drivers.txt'
$ printf 'DRIVER|FILE|DATE|ALIAS\nSoil Meter|qrn0001.txt|20070301|\n' > 'My Documents/Quorin/qrnctrl.txt'
$ printf 'FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nPlot|1||||||\n' > 'My Documents/Quorin/soil.txt'
$ printf 'Plot\nA12\n' > 'My Documents/Quorin/qrn0001.txt'
$ quorin-console --device smartphone
{"event":"grab","key":2}
> title 1
{"done":"title"}
> choose Start...
{"done":"choose"}
> menu 1 1
{"done":"menu","error":"the item is not visible"}
> title 1
{"done":"title"}
> title 1
{"done":"title"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 100
{"done":"tick"}
# Esc is this device's delete key while a field is open.
> tap 0 1
{"done":"tap"}
> key 27
{"event":"send","character":8}
{"done":"key"}
> show
      Download                               1/1
    --------------------------------------------------------------------------------
    > Plot                                   [A1_]
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
> choose Next Record
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 100
{"done":"tick"}
# Without an open field it is Back.
> key 27
{"done":"key"}
> tick 100
{"done":"tick"}
> show
      Downloads
    --------------------------------------------------------------------------------
    > qrn0001.txt
    --------------------------------------------------------------------------------
    [File] Open | Delete | Rename | New                                       [Back]
{"done":"show"}
> title 2
{"done":"title"}
> title 2
{"done":"title"}
> show
                                         Velmor
                                        Tallybook
    
                                         V 0.27
    --------------------------------------------------------------------------------
    [Main] Start... | Exit
                       [Options] Preferences... | inf editor... | Bluetooth Debug...
{"done":"show"}

# Before version 5 there were no soft keys: a press of a caption opens the list of that menu, which the
# device shows, and each menu has one. There Esc is Back even while a field is open, whose text is saved.
$ quorin-console --device pocketpc --os-version 4.2
> choose Start...
{"done":"choose"}
> title 1
{"done":"title"}
> title 2
{"done":"title"}
> menu 1 1
{"done":"menu"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 100
{"done":"tick"}
> tap 0 1
{"done":"tap"}
> set B
{"done":"set"}
> key 27
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"key"}
> tick 100
{"done":"tick"}
> show
      Downloads
    --------------------------------------------------------------------------------
    > qrn0001.txt
    --------------------------------------------------------------------------------
    [File] Open | Delete | Rename | New                                       [Back]
{"done":"show"}
> menu 2 1
{"done":"menu"}
> menu 2 1
{"done":"menu"}
$ cat 'My Documents/Quorin/qrn0001.txt'
Plot
B

# The second line of "QVRN.info", in the root of the first volume, names the data folder. Other tools make that file: when
# the preferences are left, in any way, its line is updated; a missing file is not made.
$ quorin-console --device smartphone --strict
{"event":"grab","key":2}
> choose Preferences...
{"done":"choose"}
> choose Back
{"done":"choose"}
$ ls; printf 'info\npath=elsewhere\nmore\n' > QVRN.info
My Documents
settings.ini
$ quorin-console --device smartphone --strict
{"event":"grab","key":2}
> choose Preferences...
{"done":"choose"}
> choose Back
{"done":"choose"}
$ cat QVRN.info; printf 'info\npath=elsewhere\n' > QVRN.info
info
path=\My Documents\Quorin\
more
$ quorin-console --device smartphone --strict
{"event":"grab","key":2}
> choose Preferences...
{"done":"choose"}
> title 1
{"done":"title"}
$ cat QVRN.info; printf 'info\n' > QVRN.info
info
path=\My Documents\Quorin\
$ quorin-console --device pocketpc --strict
> choose Preferences...
{"done":"choose"}
> key 27
{"done":"key"}
$ cat QVRN.info; printf '' > QVRN.info
info
path=\My Documents\Quorin\
$ quorin-console --device pocketpc --strict
> choose Preferences...
{"done":"choose"}
> close
{"done":"close"}
$ cat QVRN.info
path=\My Documents\Quorin\
