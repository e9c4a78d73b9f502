<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP">
<context>
    <name>AEPoint</name>
    <message>
        <source>Number of this energy</source>
        <translation>このエネルギーの番号</translation>
    </message>
    <message>
        <source>Use</source>
        <translation>使用</translation>
    </message>
    <message>
        <source>Use this energy in the calculations</source>
        <translation>このエネルギーを計算に使う</translation>
    </message>
    <message>
        <source>V</source>
        <translation>V</translation>
    </message>
    <message>
        <source>V point: the energy at which the valence is calculated</source>
        <translation>V 点：価数を求めるエネルギー</translation>
    </message>
    <message>
        <source>LCF</source>
        <translation>LCF</translation>
    </message>
    <message>
        <source>Use this energy in the linear combination fit</source>
        <translation>このエネルギーを線形結合フィッティングに使う</translation>
    </message>
    <message>
        <source>Energy[eV]</source>
        <translation>E [eV]</translation>
    </message>
    <message>
        <source>Energy of this map in eV; taken from the file when it has one</source>
        <translation>このマップのエネルギー (eV)。ファイルに記載があればそれを使う</translation>
    </message>
    <message>
        <source>Map file</source>
        <translation>マップファイル</translation>
    </message>
    <message>
        <source>Show this map in the data map window</source>
        <translation>このマップをデータマップに表示する</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>表示</translation>
    </message>
    <message>
        <source>Target</source>
        <translation>全体試料</translation>
    </message>
    <message>
        <source>Absorption of the target at this energy, less its background line</source>
        <translation>このエネルギーでの全体試料の吸収（バックグラウンドを引いた値）</translation>
    </message>
    <message>
        <source>Ref 1</source>
        <translation>標準 1</translation>
    </message>
    <message>
        <source>Absorption of reference 1 at this energy, less its background line</source>
        <translation>このエネルギーでの標準試料 1 の吸収（バックグラウンドを引いた値）</translation>
    </message>
    <message>
        <source>Ref 2</source>
        <translation>標準 2</translation>
    </message>
    <message>
        <source>Absorption of reference 2 at this energy, less its background line</source>
        <translation>このエネルギーでの標準試料 2 の吸収（バックグラウンドを引いた値）</translation>
    </message>
    <message>
        <source>Ref 3</source>
        <translation>標準 3</translation>
    </message>
    <message>
        <source>Absorption of reference 3 at this energy, less its background line</source>
        <translation>このエネルギーでの標準試料 3 の吸収（バックグラウンドを引いた値）</translation>
    </message>
    <message>
        <source>Ref 4</source>
        <translation>標準 4</translation>
    </message>
    <message>
        <source>Absorption of reference 4 at this energy, less its background line</source>
        <translation>このエネルギーでの標準試料 4 の吸収（バックグラウンドを引いた値）</translation>
    </message>
    <message>
        <source>Cannot read %1</source>
        <translation>%1 を読めません</translation>
    </message>
    <message>
        <source>No map data in %1</source>
        <translation>%1 にマップデータがありません</translation>
    </message>
    <message>
        <source>No map size in %1</source>
        <translation>%1 にマップの大きさがありません</translation>
    </message>
    <message>
        <source>%1 points, not %2</source>
        <translation>%1 点（%2 ではない）</translation>
    </message>
    <message>
        <source>Energy %1: choose a map</source>
        <translation>エネルギー %1：マップを選択</translation>
    </message>
    <message>
        <source>Cannot read %1: %2</source>
        <translation>%1 を読み込めません：%2</translation>
    </message>
    <message>
        <source>Not enough memory for %1</source>
        <translation>%1 を読み込むメモリが足りません</translation>
    </message>
    <message>
        <source>No map data in %1: a line is longer than 64 MB</source>
        <translation>%1 にマップデータがありません：64 MB を超える行があります</translation>
    </message>
</context>
<context>
    <name>AFileSelect</name>
    <message>
        <source>File</source>
        <translation>ファイル</translation>
    </message>
    <message>
        <source>The chosen file; drop a file here to choose it</source>
        <translation>選んだファイル。ここにドロップしても選べる</translation>
    </message>
    <message>
        <source>Choose a file in a dialog</source>
        <translation>ダイアログでファイルを選ぶ</translation>
    </message>
    <message>
        <source>Sel.</source>
        <translation>選択</translation>
    </message>
    <message>
        <source>Clear the choice</source>
        <translation>選択を取り消す</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>クリア</translation>
    </message>
    <message>
        <source>dE[eV]</source>
        <translation>dE[eV]</translation>
    </message>
    <message>
        <source>Energy shift in eV, subtracted from every energy of the spectrum</source>
        <translation>エネルギーシフト (eV)。スペクトルの全エネルギーから引く</translation>
    </message>
    <message>
        <source>All (* *.*)</source>
        <translation>すべて (* *.*)</translation>
    </message>
    <message>
        <source>Data Files (*.dat)</source>
        <translation>データファイル (*.dat)</translation>
    </message>
    <message>
        <source>%1 exists already.
Do you want to replace it?</source>
        <translation>%1 は既にあります。
置き換えますか？</translation>
    </message>
    <message>
        <source>Name a file to write</source>
        <translation>書き込むファイルの名前</translation>
    </message>
    <message>
        <source>Choose files</source>
        <translation>ファイルの選択</translation>
    </message>
    <message>
        <source>Choose a file</source>
        <translation>ファイルの選択</translation>
    </message>
</context>
<context>
    <name>ARefFile</name>
    <message>
        <source>Ref 1</source>
        <translation>標準 1</translation>
    </message>
    <message>
        <source>Use this reference in the calculations</source>
        <translation>この標準試料を計算に使う</translation>
    </message>
    <message>
        <source>Use</source>
        <translation>使用</translation>
    </message>
    <message>
        <source>Valence</source>
        <translation>価数</translation>
    </message>
    <message>
        <source>Valence of the reference compound, a number without unit</source>
        <translation>標準試料の価数（単位なし）</translation>
    </message>
    <message>
        <source>Ratio</source>
        <translation>比率</translation>
    </message>
    <message>
        <source>Fraction of this reference in the target, from 0 to 1</source>
        <translation>全体試料中のこの標準試料の割合 (0～1)</translation>
    </message>
    <message>
        <source>dMut</source>
        <translation>dMut</translation>
    </message>
    <message>
        <source>Edge jump of this reference in the target (dMut), dimensionless</source>
        <translation>全体試料中のこの標準試料のエッジジャンプ (dMut、無次元)</translation>
    </message>
    <message>
        <source>%1: choose a spectrum</source>
        <translation>%1：スペクトルを選択</translation>
    </message>
</context>
<context>
    <name>AXafsFileSelect</name>
    <message>
        <source>%1 is not a spectrum</source>
        <translation>%1 はスペクトルではありません</translation>
    </message>
    <message>
        <source>Cannot read %1</source>
        <translation>%1 を読めません</translation>
    </message>
    <message>
        <source>Cannot read %1: %2</source>
        <translation>%1 を読み込めません：%2</translation>
    </message>
    <message>
        <source>Eng.[eV]</source>
        <translation>E [eV]</translation>
    </message>
    <message>
        <source>mut</source>
        <translation>mut</translation>
    </message>
    <message>
        <source>Edge Jump : %1</source>
        <translation>エッジジャンプ : %1</translation>
    </message>
    <message>
        <source>%1 points, %2-%3 eV, E0 %4</source>
        <translation>%1 点、%2-%3 eV、E0 %4</translation>
    </message>
</context>
<context>
    <name>Body</name>
    <message>
        <source>MainWindow</source>
        <translation>メインウィンドウ</translation>
    </message>
</context>
<context>
    <name>ColourBarMenu</name>
    <message>
        <source>Inverted</source>
        <translation>反転</translation>
    </message>
    <message>
        <source>Black, red, yellow, white</source>
        <translation>黒・赤・黄・白</translation>
    </message>
    <message>
        <source>Black, green, cyan, white</source>
        <translation>黒・緑・シアン・白</translation>
    </message>
    <message>
        <source>Black, blue, magenta, white</source>
        <translation>黒・青・マゼンタ・白</translation>
    </message>
    <message>
        <source>Red, green, blue</source>
        <translation>赤・緑・青</translation>
    </message>
    <message>
        <source>Red, blue, green</source>
        <translation>赤・青・緑</translation>
    </message>
    <message>
        <source>Green, red, blue</source>
        <translation>緑・赤・青</translation>
    </message>
    <message>
        <source>Green, blue, red</source>
        <translation>緑・青・赤</translation>
    </message>
    <message>
        <source>Blue, red, green</source>
        <translation>青・赤・緑</translation>
    </message>
    <message>
        <source>Blue, green, red</source>
        <translation>青・緑・赤</translation>
    </message>
    <message>
        <source>Red, cyan</source>
        <translation>赤・シアン</translation>
    </message>
    <message>
        <source>Green, magenta</source>
        <translation>緑・マゼンタ</translation>
    </message>
    <message>
        <source>Blue, yellow</source>
        <translation>青・黄</translation>
    </message>
    <message>
        <source>Even steps, dark blue to yellow (colour-blind safe)</source>
        <translation>均等な段階、紺から黄（色覚多様性対応）</translation>
    </message>
    <message>
        <source>Grey, black to white</source>
        <translation>グレー、黒から白</translation>
    </message>
    <message>
        <source>Limits by percentile (2nd to 98th)</source>
        <translation>パーセンタイルで上下限を設定（2～98）</translation>
    </message>
</context>
<context>
    <name>DispABase</name>
    <message>
        <source>Frame</source>
        <translation>フレーム</translation>
    </message>
    <message>
        <source>Right-click to copy or save this graph</source>
        <translation>右クリックでグラフをコピー・保存</translation>
    </message>
    <message>
        <source> x:</source>
        <translation> x:</translation>
    </message>
    <message>
        <source>x value under the mouse</source>
        <translation>マウス位置の x の値</translation>
    </message>
    <message>
        <source>y:</source>
        <translation>y:</translation>
    </message>
    <message>
        <source>y value under the mouse</source>
        <translation>マウス位置の y の値</translation>
    </message>
    <message>
        <source>Pop this graph out into a window of its own, or dock it back</source>
        <translation>グラフを別ウィンドウに出す／元に戻す</translation>
    </message>
    <message>
        <source>P/D</source>
        <translation>P/D</translation>
    </message>
</context>
<context>
    <name>DispArea</name>
    <message>
        <source>Frame</source>
        <translation>フレーム</translation>
    </message>
</context>
<context>
    <name>DispMBase</name>
    <message>
        <source>Frame</source>
        <translation>フレーム</translation>
    </message>
    <message>
        <source>Right-click to copy or save this map</source>
        <translation>右クリックでマップをコピー・保存</translation>
    </message>
    <message>
        <source>  x:</source>
        <translation>  x:</translation>
    </message>
    <message>
        <source>Column of the map under the mouse</source>
        <translation>マウス位置のマップの列</translation>
    </message>
    <message>
        <source>  y:</source>
        <translation>  y:</translation>
    </message>
    <message>
        <source>Row of the map under the mouse</source>
        <translation>マウス位置のマップの行</translation>
    </message>
    <message>
        <source>  Val:</source>
        <translation>  値:</translation>
    </message>
    <message>
        <source>Value of the map under the mouse</source>
        <translation>マウス位置のマップの値</translation>
    </message>
    <message>
        <source>Pop this map out into a window of its own, or dock it back</source>
        <translation>マップを別ウィンドウに出す／元に戻す</translation>
    </message>
    <message>
        <source>P/D</source>
        <translation>P/D</translation>
    </message>
    <message>
        <source>Value at the upper end of the colours</source>
        <translation>カラースケール上端の値</translation>
    </message>
    <message>
        <source>Value at the lower end of the colours</source>
        <translation>カラースケール下端の値</translation>
    </message>
    <message>
        <source>Upper handle of the colours at %1</source>
        <translation>カラーバーの上のつまみの値: %1</translation>
    </message>
    <message>
        <source>Lower handle of the colours at %1</source>
        <translation>カラーバーの下のつまみの値: %1</translation>
    </message>
    <message>
        <source>Standard error of the value, from the counting noise</source>
        <translation>値の標準誤差（計数ノイズによる）</translation>
    </message>
</context>
<context>
    <name>DisplayPicture</name>
    <message>
        <source>The name must end in .png or .pdf.</source>
        <translation>ファイル名の末尾は .png か .pdf にしてください。</translation>
    </message>
    <message>
        <source>There is nothing to see in this display.</source>
        <translation>この表示には何も描かれていません。</translation>
    </message>
    <message>
        <source>There was no room for all of it.</source>
        <translation>空き容量が足りず、すべてを書き込めませんでした。</translation>
    </message>
</context>
<context>
    <name>Displays</name>
    <message>
        <source>Frame</source>
        <translation>フレーム</translation>
    </message>
    <message>
        <source>Ref1</source>
        <translation>標準 1</translation>
    </message>
    <message>
        <source>Ref2</source>
        <translation>標準 2</translation>
    </message>
    <message>
        <source>Ref3</source>
        <translation>標準 3</translation>
    </message>
    <message>
        <source>Ref4</source>
        <translation>標準 4</translation>
    </message>
    <message>
        <source>Target</source>
        <translation>全体試料</translation>
    </message>
    <message>
        <source>Muts</source>
        <translation>全スペクトル</translation>
    </message>
    <message>
        <source>LCF vs MPS</source>
        <translation>LCF 対 MPS</translation>
    </message>
    <message>
        <source>Histgram of a</source>
        <translation>a のヒストグラム</translation>
    </message>
    <message>
        <source>Histgram of dMut</source>
        <translation>dMut のヒストグラム</translation>
    </message>
    <message>
        <source>dMut/v or a</source>
        <translation>dMut/価数・a</translation>
    </message>
    <message>
        <source>M2/M3</source>
        <translation>M2/M3</translation>
    </message>
</context>
<context>
    <name>EnergyShift</name>
    <message>
        <source>The energy shift of the maps cannot be told: %1.</source>
        <translation>マップのエネルギーのずれは求められません: %1。</translation>
    </message>
    <message>
        <source>there is no mean spectrum of material</source>
        <translation>物質の平均スペクトルがありません</translation>
    </message>
    <message>
        <source>there are too few energies for a misfit</source>
        <translation>エネルギー点が少なく、フィットの残差が得られません</translation>
    </message>
    <message>
        <source>the misfit still falls at 2 eV</source>
        <translation>2 eV ずらしても残差が減り続けます</translation>
    </message>
    <message>
        <source>the misfit hardly depends on it</source>
        <translation>残差がずれにほとんど依存しません</translation>
    </message>
    <message>
        <source>several shifts do equally well</source>
        <translation>同程度によく合うずれが複数あります</translation>
    </message>
    <message>
        <source>Energy shift of the maps: %1 +- %2 eV, to be added to the dE of all references (misfit %3 without, %4 with it)</source>
        <translation>マップのエネルギーのずれ: %1 +- %2 eV。すべての参照試料の dE に加える値です(残差は補正なしで %3、補正ありで %4)</translation>
    </message>
</context>
<context>
    <name>FourPs</name>
    <message>
        <source>Frame</source>
        <translation>フレーム</translation>
    </message>
    <message>
        <source>Target</source>
        <translation>全体試料</translation>
    </message>
    <message>
        <source>dMut</source>
        <translation>dMut</translation>
    </message>
    <message>
        <source>Total edge jump of the target found by the non-equivalent method</source>
        <translation>非等価法で求めた全体試料の全エッジジャンプ</translation>
    </message>
    <message>
        <source>Several maps</source>
        <translation>複数のマップ</translation>
    </message>
    <message>
        <source>Choose several map files at once: they fill the rows from the first on</source>
        <translation>マップファイルをまとめて選ぶ。先頭の行から順に入る</translation>
    </message>
    <message>
        <source>Result of the linear combination fit</source>
        <translation>線形結合フィッティングの結果</translation>
    </message>
    <message>
        <source>Quality of the linear combination fit</source>
        <translation>線形結合フィッティングの良さ</translation>
    </message>
    <message>
        <source>Method</source>
        <translation>解析法</translation>
    </message>
    <message>
        <source>4 Points Meth.</source>
        <translation>4 点法</translation>
    </message>
    <message>
        <source>Two references; anchor points and one V point</source>
        <translation>標準試料 2 つ、アンカー点と V 点 1 つを使う</translation>
    </message>
    <message>
        <source>Non Equiv. Meth.</source>
        <translation>非等価法</translation>
    </message>
    <message>
        <source>Up to four references with different edge jumps, all used energies</source>
        <translation>エッジジャンプの異なる標準試料を 4 つまで、使用する全エネルギーで解析する</translation>
    </message>
    <message>
        <source>Calc. Type for t, mu0, and k: </source>
        <translation>t, mu0, k の計算方法：</translation>
    </message>
    <message>
        <source>Exact 4 points</source>
        <translation>厳密 4 点</translation>
    </message>
    <message>
        <source>Thickness and linear background solved exactly from three anchor points</source>
        <translation>厚さと直線バックグラウンドをアンカー 3 点から厳密に解く</translation>
    </message>
    <message>
        <source>Least Square</source>
        <translation>最小二乗</translation>
    </message>
    <message>
        <source>Thickness and linear background fitted to three or more anchor points</source>
        <translation>厚さと直線バックグラウンドをアンカー 3 点以上に最小二乗で合わせる</translation>
    </message>
    <message>
        <source>B.G.Line Type:</source>
        <translation>B.G. の形：</translation>
    </message>
    <message>
        <source>Vic.</source>
        <translation>Vic.</translation>
    </message>
    <message>
        <source>Victoreen background of the non-equivalent method: mu0 + C1 L^3 + C2 L^4, L the wavelength in angstrom</source>
        <translation>非等価法のビクトリーン型バックグラウンド：mu0 + C1 L^3 + C2 L^4（L は波長、Å）</translation>
    </message>
    <message>
        <source>Linear</source>
        <translation>直線</translation>
    </message>
    <message>
        <source>Linear background of the non-equivalent method: mu0 + C1 E, E in eV</source>
        <translation>非等価法の直線バックグラウンド：mu0 + C1 E（E は eV）</translation>
    </message>
    <message>
        <source>Edge and ranges</source>
        <translation>吸収端と範囲</translation>
    </message>
    <message>
        <source>Edge[eV]</source>
        <translation>吸収端[eV]</translation>
    </message>
    <message>
        <source>Edge energy in eV; taken from the last file unless &quot;Keep&quot; is on</source>
        <translation>吸収端エネルギー (eV)。「固定」でなければ最後に読んだファイルの値になる</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>固定</translation>
    </message>
    <message>
        <source>Keep this edge energy when a new file is read</source>
        <translation>新しいファイルを読んでもこの吸収端を保つ</translation>
    </message>
    <message>
        <source>Pre Edge End [eV]</source>
        <translation>プリエッジ終端 [eV]</translation>
    </message>
    <message>
        <source>End of the pre-edge range as an offset from the edge, in eV</source>
        <translation>プリエッジ範囲の終端。吸収端からの差 (eV)</translation>
    </message>
    <message>
        <source>Post Edge Start [eV]</source>
        <translation>ポストエッジ始端 [eV]</translation>
    </message>
    <message>
        <source>Start of the post-edge range as an offset from the edge, in eV</source>
        <translation>ポストエッジ範囲の始端。吸収端からの差 (eV)</translation>
    </message>
    <message>
        <source>Lines subtracted</source>
        <translation>差し引く線</translation>
    </message>
    <message>
        <source>Refs: Sub.</source>
        <translation>標準試料：</translation>
    </message>
    <message>
        <source>Pre E. Line</source>
        <translation>プリエッジ線</translation>
    </message>
    <message>
        <source>Subtract the pre-edge line from the references</source>
        <translation>標準試料からプリエッジ線を引く</translation>
    </message>
    <message>
        <source>Post E. Line</source>
        <translation>ポストエッジ線</translation>
    </message>
    <message>
        <source>Subtract the post-edge line from the references</source>
        <translation>標準試料からポストエッジ線を引く</translation>
    </message>
    <message>
        <source>Target: Sub.</source>
        <translation>全体試料：</translation>
    </message>
    <message>
        <source>Subtract the pre-edge line from the target</source>
        <translation>全体試料からプリエッジ線を引く</translation>
    </message>
    <message>
        <source>Subtract the post-edge line from the target</source>
        <translation>全体試料からポストエッジ線を引く</translation>
    </message>
    <message>
        <source>When drawing all mut</source>
        <translation>全スペクトルの描き方</translation>
    </message>
    <message>
        <source>No normalize</source>
        <translation>規格化なし</translation>
    </message>
    <message>
        <source>Show mu as measured</source>
        <translation>測定した mu のまま表示する</translation>
    </message>
    <message>
        <source>Normalized by edge jump</source>
        <translation>エッジジャンプで規格化</translation>
    </message>
    <message>
        <source>Show (mu - pre-edge line) / edge jump</source>
        <translation>(mu − プリエッジ線) / エッジジャンプを表示する</translation>
    </message>
    <message>
        <source>Sub pre Vic.</source>
        <translation>プリエッジを引く</translation>
    </message>
    <message>
        <source>Show mu - pre-edge line</source>
        <translation>mu − プリエッジ線を表示する</translation>
    </message>
    <message>
        <source>Normalized by 2 Vics </source>
        <translation>2 本の線で規格化 </translation>
    </message>
    <message>
        <source>Show (mu - pre-edge line) / (post-edge line - pre-edge line)</source>
        <translation>(mu − プリエッジ線) / (ポストエッジ線 − プリエッジ線) を表示する</translation>
    </message>
    <message>
        <source>Full Range</source>
        <translation>全範囲</translation>
    </message>
    <message>
        <source>Show the whole scans; off: from twice the pre-edge offset to twice the post-edge offset around the edge</source>
        <translation>走査範囲の全体を表示する。オフのときは吸収端から「プリエッジの差の 2 倍」～「ポストエッジの差の 2 倍」</translation>
    </message>
    <message>
        <source>Histograms</source>
        <translation>ヒストグラム</translation>
    </message>
    <message>
        <source>From</source>
        <translation>下限</translation>
    </message>
    <message>
        <source>To</source>
        <translation>上限</translation>
    </message>
    <message>
        <source>Boxes</source>
        <translation>区間数</translation>
    </message>
    <message>
        <source>Valence</source>
        <translation>価数</translation>
    </message>
    <message>
        <source>Centre of the first box of the histogram of valence</source>
        <translation>価数ヒストグラムの最初の区間の中心</translation>
    </message>
    <message>
        <source>Centre of the last box of the histogram of valence</source>
        <translation>価数ヒストグラムの最後の区間の中心</translation>
    </message>
    <message>
        <source>Number of boxes of the histogram of valence</source>
        <translation>価数ヒストグラムの区間数</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>自動</translation>
    </message>
    <message>
        <source>Set the range from the references before each calculation</source>
        <translation>計算のたびに標準試料から範囲を決める</translation>
    </message>
    <message>
        <source>t/ts</source>
        <translation>t/ts</translation>
    </message>
    <message>
        <source>Centre of the first box of the histogram of thickness (t/ts, or the total edge jump of the non-equivalent method)</source>
        <translation>厚さヒストグラムの最初の区間の中心（t/ts、非等価法では全エッジジャンプ）</translation>
    </message>
    <message>
        <source>Centre of the last box of the histogram of thickness (t/ts, or the total edge jump of the non-equivalent method)</source>
        <translation>厚さヒストグラムの最後の区間の中心（t/ts、非等価法では全エッジジャンプ）</translation>
    </message>
    <message>
        <source>Number of boxes of the histogram of thickness (t/ts, or the total edge jump of the non-equivalent method)</source>
        <translation>厚さヒストグラムの区間数（t/ts、非等価法では全エッジジャンプ）</translation>
    </message>
    <message>
        <source>per reference</source>
        <translation>標準試料別</translation>
    </message>
    <message>
        <source>Outline in the histogram of valence the pixels in which a reference makes up half or more (non-equivalent method)</source>
        <translation>ある標準試料が半分以上を占める画素を価数ヒストグラムに線で示す（非等価法）</translation>
    </message>
    <message>
        <source>Outline in the histogram of thickness the pixels in which a reference makes up half or more (non-equivalent method)</source>
        <translation>ある標準試料が半分以上を占める画素を厚さヒストグラムに線で示す（非等価法）</translation>
    </message>
    <message>
        <source>Calc.</source>
        <translation>計算</translation>
    </message>
    <message>
        <source>LCF</source>
        <translation>LCF</translation>
    </message>
    <message>
        <source>Fit the target by the references over the energies marked LCF</source>
        <translation>LCF を付けたエネルギーの範囲で全体試料を標準試料の和でフィットする</translation>
    </message>
    <message>
        <source>More Conds</source>
        <translation>詳細条件</translation>
    </message>
    <message>
        <source>Show or hide what is rarely changed</source>
        <translation>あまり変えない条件を表示・非表示にする</translation>
    </message>
    <message>
        <source>Show Graphs</source>
        <translation>グラフ表示</translation>
    </message>
    <message>
        <source>Show or hide the window with the graphs</source>
        <translation>グラフのウィンドウを表示・非表示にする</translation>
    </message>
    <message>
        <source>Show Data Map</source>
        <translation>データマップ表示</translation>
    </message>
    <message>
        <source>Show or hide the window with a measured map</source>
        <translation>測定マップのウィンドウを表示・非表示にする</translation>
    </message>
    <message>
        <source>Record Select :</source>
        <translation>記録する量：</translation>
    </message>
    <message>
        <source>Ratio 1</source>
        <translation>比率 1</translation>
    </message>
    <message>
        <source>Write this quantity into the result file of the non-equivalent method</source>
        <translation>非等価法の結果ファイルにこの量を書く</translation>
    </message>
    <message>
        <source>Ratio 2</source>
        <translation>比率 2</translation>
    </message>
    <message>
        <source>Ratio 3</source>
        <translation>比率 3</translation>
    </message>
    <message>
        <source>Ratio 4</source>
        <translation>比率 4</translation>
    </message>
    <message>
        <source>dMut 1</source>
        <translation>dMut 1</translation>
    </message>
    <message>
        <source>dMut 2</source>
        <translation>dMut 2</translation>
    </message>
    <message>
        <source>dMut 3</source>
        <translation>dMut 3</translation>
    </message>
    <message>
        <source>dMut 4</source>
        <translation>dMut 4</translation>
    </message>
    <message>
        <source>mut0</source>
        <translation>mut0</translation>
    </message>
    <message>
        <source>C1</source>
        <translation>C1</translation>
    </message>
    <message>
        <source>C2</source>
        <translation>C2</translation>
    </message>
    <message>
        <source>Amount</source>
        <translation>総量</translation>
    </message>
    <message>
        <source>Hist Grams</source>
        <translation>ヒストグラムの量</translation>
    </message>
    <message>
        <source>Show the distribution of this quantity of the non-equivalent method</source>
        <translation>非等価法のこの量の分布を表示する</translation>
    </message>
    <message>
        <source>M2/M3</source>
        <translation>M2/M3</translation>
    </message>
    <message>
        <source>Show the M2/M3 scatter in a window of its own</source>
        <translation>M2/M3 散布図を別ウィンドウに表示する</translation>
    </message>
    <message>
        <source>blue</source>
        <translation>青</translation>
    </message>
    <message>
        <source>Draw the points of the M2/M3 scatter in blue instead of red</source>
        <translation>M2/M3 散布図の点を赤ではなく青で描く</translation>
    </message>
    <message>
        <source>Spectra for display</source>
        <translation>表示用スペクトル</translation>
    </message>
    <message>
        <source>Spectra that are only shown with the others</source>
        <translation>ほかと一緒に表示するだけのスペクトル</translation>
    </message>
    <message>
        <source>The spectra chosen for display</source>
        <translation>表示用に選んだスペクトル</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>削除</translation>
    </message>
    <message>
        <source>Take the chosen spectrum out of the display</source>
        <translation>選んだスペクトルを表示から外す</translation>
    </message>
    <message>
        <source>Results and messages, the newest at the end</source>
        <translation>結果とメッセージ。新しいものほど下</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>消去</translation>
    </message>
    <message>
        <source>Empty the message area</source>
        <translation>メッセージを消去する</translation>
    </message>
    <message>
        <source>Show this quantity in the result map</source>
        <translation>この量を結果マップに表示する</translation>
    </message>
    <message>
        <source>hide below</source>
        <translation>これ未満を隠す</translation>
    </message>
    <message>
        <source>Hide the pixels whose amount (t/ts) is below this number, in this map only</source>
        <translation>総量 (t/ts) がこの値未満の画素を隠す（このマップの表示だけ）</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>The result file; the two histogram files get its name with _HGAlpha and _HGThick</source>
        <translation>結果ファイル。2 つのヒストグラムファイルは名前に _HGAlpha と _HGThick が付く</translation>
    </message>
    <message>
        <source>Write</source>
        <translation>書き込み</translation>
    </message>
    <message>
        <source>Calc. &amp;&amp; Write</source>
        <translation>計算 &amp;&amp; 書き込み</translation>
    </message>
    <message>
        <source>Calculate the map and write the results</source>
        <translation>マップを計算して結果を書き込む</translation>
    </message>
    <message>
        <source>Ref %1</source>
        <translation>標準 %1</translation>
    </message>
    <message>
        <source>Graphs</source>
        <translation>グラフ</translation>
    </message>
    <message>
        <source>Data map</source>
        <translation>データマップ</translation>
    </message>
    <message>
        <source>V Point is not selected</source>
        <translation>V 点が選ばれていません</translation>
    </message>
    <message>
        <source>Ref File %1 is not valid.</source>
        <translation>標準試料ファイル %1 は有効ではありません。</translation>
    </message>
    <message>
        <source>Number of selected data sets %1 is less than %2.</source>
        <translation>選ばれたデータの数 %1 が %2 より少ないです。</translation>
    </message>
    <message>
        <source>V Point is not selected.</source>
        <translation>V 点が選ばれていません。</translation>
    </message>
    <message>
        <source>The 1st Ref File is not valid.</source>
        <translation>1 番目の標準試料ファイルは有効ではありません。</translation>
    </message>
    <message>
        <source>The 2nd Ref File is not valid.</source>
        <translation>2 番目の標準試料ファイルは有効ではありません。</translation>
    </message>
    <message>
        <source>Target File1 is not valid.</source>
        <translation>全体試料ファイル 1 は有効ではありません。</translation>
    </message>
    <message>
        <source>Number of selected data sets %1 is not %2.</source>
        <translation>選ばれたデータの数 %1 が %2 ではありません。</translation>
    </message>
    <message>
        <source>Number of valied Ref Files is %1, which is less than 2.</source>
        <translation>有効な標準試料ファイルは %1 個で、2 個に足りません。</translation>
    </message>
    <message>
        <source>not computed by this method</source>
        <translation>この解析法では計算されません</translation>
    </message>
    <message>
        <source>Data map, %1 eV</source>
        <translation>データマップ、%1 eV</translation>
    </message>
    <message>
        <source>MPs</source>
        <translation>MPs</translation>
    </message>
    <message>
        <source>Thick.</source>
        <translation>厚さ</translation>
    </message>
    <message>
        <source>Num.</source>
        <translation>画素数</translation>
    </message>
    <message>
        <source>Eng.[eV]</source>
        <translation>E [eV]</translation>
    </message>
    <message>
        <source>mut</source>
        <translation>mut</translation>
    </message>
    <message>
        <source>%1 eV: %2</source>
        <translation>%1 eV: %2</translation>
    </message>
    <message>
        <source>M2</source>
        <translation>M2</translation>
    </message>
    <message>
        <source>M3</source>
        <translation>M3</translation>
    </message>
    <message>
        <source>Can&apos;t open the file [%1]</source>
        <translation>ファイル [%1] を開けません</translation>
    </message>
    <message>
        <source>Can&apos;t write the file [%1]</source>
        <translation>ファイル [%1] に書き込めません</translation>
    </message>
    <message>
        <source>3ps: a = %1, Valence = %2</source>
        <translation>3点法：a = %1, 価数 = %2</translation>
    </message>
    <message>
        <source>a = %1, Valence = %2, t/ts = %3</source>
        <translation>a = %1, 価数 = %2, t/ts = %3</translation>
    </message>
    <message>
        <source>4ps2: a = %1, Valence = %2, t/ts = %3</source>
        <translation>4点法(最小二乗)：a = %1, 価数 = %2, t/ts = %3</translation>
    </message>
    <message>
        <source>The map of %1 x %2 pixels is too large.</source>
        <translation>%1 x %2 画素のマップは大きすぎます。</translation>
    </message>
    <message>
        <source>Energy Range is not selected, which should by selected by CB of TR.</source>
        <translation>エネルギー範囲が選ばれていません。エネルギーの行の LCF で選んでください。</translation>
    </message>
    <message>
        <source>Number of Valid Reference files is %1, which is less than 2</source>
        <translation>有効な標準試料ファイルは %1 個で、2 個に足りません</translation>
    </message>
    <message>
        <source>R = %1, %2 points</source>
        <translation>R = %1、%2 点</translation>
    </message>
    <message>
        <source>R = sum of (y - fit)^2 / sum of y^2; standard errors of the coefficients:</source>
        <translation>R = Σ(y − フィット)^2 / Σy^2。係数の標準誤差：</translation>
    </message>
    <message>
        <source>Reference %1: %2 ± %3</source>
        <translation>標準試料 %1：%2 ± %3</translation>
    </message>
    <message>
        <source>Base: %1 ± %2</source>
        <translation>ベース：%1 ± %2</translation>
    </message>
    <message>
        <source>%1 map files were chosen; the first %2 were taken.</source>
        <translation>マップファイルが %1 個選ばれたので、最初の %2 個を使いました。</translation>
    </message>
    <message>
        <source>%1 is not a spectrum file.</source>
        <translation>%1 はスペクトルファイルではありません。</translation>
    </message>
    <message>
        <source>Save shown map as text...</source>
        <translation>表示中のマップをテキストで保存...</translation>
    </message>
    <message>
        <source>Centre</source>
        <translation>中心</translation>
    </message>
    <message>
        <source>Result of LCF :: </source>
        <translation>LCF の結果 :: </translation>
    </message>
    <message>
        <source>, Valence = %1, Base = %2</source>
        <translation>, 価数 = %1, ベース = %2</translation>
    </message>
    <message>
        <source>Result of NEQ :: </source>
        <translation>NEQ の結果 :: </translation>
    </message>
    <message>
        <source>, Valence = %1, t = %2</source>
        <translation>, 価数 = %1, t = %2</translation>
    </message>
    <message>
        <source>Copy conditions</source>
        <translation>条件をコピー</translation>
    </message>
    <message>
        <source>Put all inputs and settings on the clipboard, as a job that flokluk-batch can run again</source>
        <translation>入力と設定をすべて、flokluk-batch で再実行できるジョブとしてクリップボードに入れます</translation>
    </message>
    <message>
        <source>Can&apos;t write the histograms of [%1]</source>
        <translation>[%1] のヒストグラムを書き込めません</translation>
    </message>
    <message>
        <source>The conditions are on the clipboard.</source>
        <translation>条件をクリップボードにコピーしました。</translation>
    </message>
    <message>
        <source>Result map, %1</source>
        <translation>結果マップ、%1</translation>
    </message>
    <message>
        <source>The coefficients c sum up to S = %1. V is the sum of c times valence; of the fractions c / S it is V / S = %2.</source>
        <translation>係数 c の和は S = %1 です。V は c と価数の積の和で、割合 c / S による価数は V / S = %2 です。</translation>
    </message>
    <message>
        <source>%1: valence</source>
        <translation>%1: 価数</translation>
    </message>
    <message>
        <source>%1: spectrum</source>
        <translation>%1: スペクトル</translation>
    </message>
    <message>
        <source>%1: values at the energies or edge jump</source>
        <translation>%1: 各エネルギーの値またはエッジジャンプ</translation>
    </message>
    <message>
        <source>Energy %1: value</source>
        <translation>エネルギー %1: 値</translation>
    </message>
    <message>
        <source>Energy %1: map file</source>
        <translation>エネルギー %1: マップファイル</translation>
    </message>
    <message>
        <source>Energies in use</source>
        <translation>使用するエネルギー</translation>
    </message>
    <message>
        <source>V Point</source>
        <translation>V 点</translation>
    </message>
    <message>
        <source>References in use</source>
        <translation>使用する標準試料</translation>
    </message>
    <message>
        <source>Changed since the map was calculated: %1</source>
        <translation>マップの計算後に変更: %1</translation>
    </message>
    <message>
        <source>Map Select</source>
        <translation>マップの選択</translation>
    </message>
    <message>
        <source>Close this window</source>
        <translation>このウィンドウを閉じる</translation>
    </message>
    <message>
        <source>Target: choose a spectrum</source>
        <translation>全体試料：スペクトルを選択</translation>
    </message>
    <message>
        <source>Several maps: choose their files</source>
        <translation>複数のマップ：ファイルを選択</translation>
    </message>
    <message>
        <source>Spectra for display: choose their files</source>
        <translation>表示用スペクトル：ファイルを選択</translation>
    </message>
    <message>
        <source>Results: name a file to write</source>
        <translation>結果：書き込むファイル名</translation>
    </message>
    <message>
        <source>%1: the pre-edge range holds %2 points (data %3)</source>
        <translation>%1: プリエッジ範囲の点は %2 個です (データ %3)</translation>
    </message>
    <message>
        <source>%1: the post-edge range holds %2 points (data %3)</source>
        <translation>%1: ポストエッジ範囲の点は %2 個です (データ %3)</translation>
    </message>
    <message>
        <source>Energy %1: %2 eV is outside of %3 (%4)</source>
        <translation>エネルギー %1: %2 eV は %3 の範囲外です (%4)</translation>
    </message>
    <message>
        <source>Energy %1: the map has %2 x %3 pixels, that of energy %4 %5 x %6</source>
        <translation>エネルギー %1: マップは %2 x %3 画素、エネルギー %4 は %5 x %6 画素です</translation>
    </message>
    <message>
        <source>%1: the valence is no number and counts as 0</source>
        <translation>%1: 価数が数値でないため 0 とします</translation>
    </message>
    <message>
        <source>Target: energies are marked LCF, but there is no spectrum</source>
        <translation>全体試料: LCF のエネルギーが選ばれていますが、スペクトルがありません</translation>
    </message>
    <message>
        <source>saved the values of &quot;%1&quot; on the clipboard</source>
        <translation>「%1」の値をクリップボードに保存しました</translation>
    </message>
    <message>
        <source>edge</source>
        <translation>吸収端</translation>
    </message>
    <message>
        <source>end of the pre-edge range</source>
        <translation>プリエッジ終端</translation>
    </message>
    <message>
        <source>start of the post-edge range</source>
        <translation>ポストエッジ始端</translation>
    </message>
    <message>
        <source>energy %1</source>
        <translation>エネルギー %1</translation>
    </message>
    <message>
        <source>%1 %2 -&gt; %3</source>
        <translation>%1 %2 -&gt; %3</translation>
    </message>
    <message>
        <source>saved %1</source>
        <translation>%1 を保存しました</translation>
    </message>
    <message>
        <source>%1 x %2 pixels, %3 energies, %4 s</source>
        <translation>%1 x %2 画素、%3 エネルギー、%4 秒</translation>
    </message>
    <message>
        <source>changed; press Calc. for a new map</source>
        <translation>変更あり。「計算」を押すとマップを計算し直します</translation>
    </message>
    <message>
        <source>%1: wrote %2 (inputs changed since)</source>
        <translation>%1：%2 を保存（その後、入力が変更されています）</translation>
    </message>
    <message>
        <source>%1: wrote %2 and its histograms</source>
        <translation>%1：%2 とヒストグラムを保存しました</translation>
    </message>
    <message>
        <source>Load conditions...</source>
        <translation>条件を読み込む...</translation>
    </message>
    <message>
        <source>Take all inputs and settings from a job file; a job dropped on the window does the same</source>
        <translation>ジョブファイルからすべての入力と設定を読み込む。ウィンドウにジョブをドロップしても同じ</translation>
    </message>
    <message>
        <source>Calculate the map (Ctrl+Return); a dot shows that an input has changed since</source>
        <translation>マップを計算する（Ctrl+Return）。点の印は、前回の計算後に入力が変わったことを示す</translation>
    </message>
    <message>
        <source>Write the results of the last calculation (Ctrl+S)</source>
        <translation>最後の計算の結果を書き込む（Ctrl+S）</translation>
    </message>
    <message>
        <source>Load conditions: choose a job</source>
        <translation>条件の読み込み：ジョブを選択</translation>
    </message>
    <message>
        <source>Jobs (*.json);;All (* *.*)</source>
        <translation>ジョブ (*.json);;すべて (* *.*)</translation>
    </message>
    <message>
        <source>%1 and %2 more</source>
        <translation>%1 ほか %2 個</translation>
    </message>
    <message>
        <source>%1 is neither a spectrum nor a map, nor a job that was dropped alone.</source>
        <translation>%1 はスペクトルでもマップでもなく、単独でドロップされたジョブでもありません。</translation>
    </message>
    <message>
        <source>Neither spectra nor maps: %1.</source>
        <translation>スペクトルでもマップでもないファイル：%1</translation>
    </message>
    <message>
        <source>No empty place for %1.</source>
        <translation>%1 を入れる空きがありません。</translation>
    </message>
    <message>
        <source>In use with the maps they had before: energies %1.</source>
        <translation>エネルギー %1 は以前のマップのまま使用中です。</translation>
    </message>
    <message>
        <source>The conditions of %1 are loaded.</source>
        <translation>%1 の条件を読み込みました。</translation>
    </message>
    <message>
        <source>%1 is not loaded.</source>
        <translation>%1 は読み込まれませんでした。</translation>
    </message>
    <message>
        <source>Energies %1 and %2 are both marked as V Point</source>
        <translation>エネルギー %1 と %2 の両方に V が付いています</translation>
    </message>
    <message>
        <source>Energy %1: %2 eV is nearly that of energy %3</source>
        <translation>エネルギー %1：%2 eV はエネルギー %3 とほぼ同じです</translation>
    </message>
    <message>
        <source>Edge: %1 eV looks like keV</source>
        <translation>吸収端：%1 eV は keV の値のようです</translation>
    </message>
    <message>
        <source>Energy %1: %2 eV looks like keV</source>
        <translation>エネルギー %1：%2 eV は keV の値のようです</translation>
    </message>
    <message>
        <source>%1: the energies look like keV (data %2)</source>
        <translation>%1：エネルギーが keV の値のようです（データ %2）</translation>
    </message>
    <message>
        <source>Energy %1: at %2 eV %3 has no finite value (%4)</source>
        <translation>エネルギー %1：%2 eV で %3 に有限の値がありません（%4）</translation>
    </message>
    <message>
        <source>%1: the same file as %2</source>
        <translation>%1：%2 と同じファイルです</translation>
    </message>
    <message>
        <source>Energy %1</source>
        <translation>エネルギー %1</translation>
    </message>
    <message>
        <source>Energy %1: no pixel of the map has a finite absorption</source>
        <translation>エネルギー %1：有限の吸収を持つ画素がマップにありません</translation>
    </message>
    <message>
        <source>Energy %1: the intensity of every pixel is 0</source>
        <translation>エネルギー %1：すべての画素の強度が 0 です</translation>
    </message>
    <message>
        <source>Energy %1: the pixels lie up to %2 of their steps from those of energy %3</source>
        <translation>エネルギー %1：画素の位置がエネルギー %3 と最大 %2 ステップずれています</translation>
    </message>
    <message>
        <source>± above</source>
        <translation>± これ超を隠す</translation>
    </message>
    <message>
        <source>Hide the pixels whose standard error of the shown quantity is above this number, in this map only</source>
        <translation>表示している量の標準誤差がこの値を超える画素を隠す（このマップの表示だけ）</translation>
    </message>
    <message>
        <source>There is no result map yet.</source>
        <translation>結果マップはまだありません。</translation>
    </message>
    <message>
        <source>The maps have changed since the calculation; press Calc. first.</source>
        <translation>計算後にマップが変わりました。先に「計算」を押してください。</translation>
    </message>
    <message>
        <source>There are no uncertainties: the energies are fewer than the unknowns.</source>
        <translation>不確かさは求められません：エネルギー点が未知数より少ないためです。</translation>
    </message>
    <message>
        <source>There is no memory for the uncertainties.</source>
        <translation>不確かさを計算するメモリーが足りません。</translation>
    </message>
    <message>
        <source>No standard errors: as many points as unknowns.</source>
        <translation>標準誤差はありません：点の数が未知数と同じです。</translation>
    </message>
    <message>
        <source>Ratio %1: %2</source>
        <translation>比率 %1：%2</translation>
    </message>
    <message>
        <source>(68 %: standard error times Student&apos;s factor %1 for n - p = %2)</source>
        <translation>（68 %：標準誤差に Student の係数 %1 を掛けた値、n - p = %2）</translation>
    </message>
    <message>
        <source>No pixel of this region has intensities and a result.</source>
        <translation>この領域には、強度と結果のある画素がありません。</translation>
    </message>
    <message>
        <source>V %1, t %2, %3 pixels, scatter %4 (expected %5)</source>
        <translation>V %1、t %2、%3 画素、ばらつき %4（予想 %5）</translation>
    </message>
    <message>
        <source>, chi² %1</source>
        <translation>、χ² %1</translation>
    </message>
    <message>
        <source>Region</source>
        <translation>領域</translation>
    </message>
    <message>
        <source>Pixels</source>
        <translation>画素数</translation>
    </message>
    <message>
        <source>Mean</source>
        <translation>平均</translation>
    </message>
    <message>
        <source>Median</source>
        <translation>中央値</translation>
    </message>
    <message>
        <source>Scatter</source>
        <translation>ばらつき</translation>
    </message>
    <message>
        <source>Expected</source>
        <translation>予想</translation>
    </message>
    <message>
        <source>chi²</source>
        <translation>χ²</translation>
    </message>
    <message>
        <source>There are %1 regions already; clear them first.</source>
        <translation>領域はすでに %1 個あります。先に消去してください。</translation>
    </message>
    <message>
        <source>Region: this pixel</source>
        <translation>領域：この画素</translation>
    </message>
    <message>
        <source>Point at a pixel of the result map first.</source>
        <translation>先に結果マップの画素を指してください。</translation>
    </message>
    <message>
        <source>Region: above thickness...</source>
        <translation>領域：厚さが指定値以上...</translation>
    </message>
    <message>
        <source>Regions: show</source>
        <translation>領域：表示</translation>
    </message>
    <message>
        <source>Regions: clear</source>
        <translation>領域：すべて消去</translation>
    </message>
    <message>
        <source>Region: above thickness</source>
        <translation>領域：厚さが指定値以上</translation>
    </message>
    <message>
        <source>All pixels with at least this amount (t/ts):</source>
        <translation>総量 (t/ts) がこの値以上のすべての画素：</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>表示</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>値</translation>
    </message>
    <message>
        <source>± (standard error)</source>
        <translation>±（標準誤差）</translation>
    </message>
    <message>
        <source>Misfit (chi² / (n - p))</source>
        <translation>不一致度 (χ² / (n - p))</translation>
    </message>
    <message>
        <source>There is no misfit: as many energies as unknowns.</source>
        <translation>不一致度はありません：エネルギー点の数が未知数と同じです。</translation>
    </message>
    <message>
        <source>%1 has no standard error.</source>
        <translation>%1 には標準誤差がありません。</translation>
    </message>
    <message>
        <source>misfit</source>
        <translation>不一致度</translation>
    </message>
    <message>
        <source>Energy %1: the records are in another order than the header says: x is %2 in record %3 and %4 in record %5</source>
        <translation>エネルギー %1：レコードの順序がヘッダーと異なります。x はレコード %3 で %2、レコード %5 で %4 です</translation>
    </message>
    <message>
        <source>Energy %1: the records are in another order than the header says: y is %2 in record %3 and %4 in record %5</source>
        <translation>エネルギー %1：レコードの順序がヘッダーと異なります。y はレコード %3 で %2、レコード %5 で %4 です</translation>
    </message>
    <message>
        <source>Energy %1: the map has %2 records, not %3 x %4 = %5</source>
        <translation>エネルギー %1：マップのレコード数は %2 で、%3 x %4 = %5 ではありません</translation>
    </message>
    <message>
        <source>Energy %1: %2 of %3 records have a value that is no number and counts as 0 (decimals take a point)</source>
        <translation>エネルギー %1：%3 レコード中 %2 に数値でない値があり、0 として扱われます（小数点には . を使います）</translation>
    </message>
    <message>
        <source>Energy %1: the map file changed while it was read</source>
        <translation>エネルギー %1：読み込み中にマップファイルが変更されました</translation>
    </message>
    <message>
        <source>Open the manual (F1)</source>
        <translation>マニュアルを開く（F1）</translation>
    </message>
    <message>
        <source>en</source>
        <extracomment>the folder of the manual in this language</extracomment>
        <translation>ja</translation>
    </message>
    <message>
        <source>The manual is not installed.</source>
        <translation>マニュアルがインストールされていません。</translation>
    </message>
    <message>
        <source>There is no program that opens %1.</source>
        <translation>%1 を開けるプログラムがありません。</translation>
    </message>
</context>
<context>
    <name>HeaderMenu</name>
    <message>
        <source>Save picture</source>
        <translation>画像の保存</translation>
    </message>
    <message>
        <source>Copy picture</source>
        <translation>画像をコピー</translation>
    </message>
    <message>
        <source>Save picture...</source>
        <translation>画像を保存...</translation>
    </message>
    <message>
        <source>Copy values</source>
        <translation>値をコピー</translation>
    </message>
    <message>
        <source>The picture could not be saved as %1: %2</source>
        <translation>画像を %1 に保存できませんでした：%2</translation>
    </message>
    <message>
        <source>PNG picture (*.png)</source>
        <translation>PNG 画像 (*.png)</translation>
    </message>
    <message>
        <source>PDF, vectors (*.pdf)</source>
        <translation>PDF（ベクトル） (*.pdf)</translation>
    </message>
    <message>
        <source>How to...</source>
        <translation>操作方法...</translation>
    </message>
    <message>
        <source>Picture, values, and what the mouse does</source>
        <translation>画像、値、マウスの操作方法</translation>
    </message>
    <message>
        <source>Wheel</source>
        <translation>ホイール</translation>
    </message>
    <message>
        <source>zooms about the mouse</source>
        <translation>マウスの位置を中心に拡大・縮小</translation>
    </message>
    <message>
        <source>Wheel over an axis</source>
        <translation>軸の上でホイール</translation>
    </message>
    <message>
        <source>zooms along that axis</source>
        <translation>その軸の方向だけ拡大・縮小</translation>
    </message>
    <message>
        <source>Shift and drag</source>
        <translation>Shift を押しながらドラッグ</translation>
    </message>
    <message>
        <source>moves the picture</source>
        <translation>表示範囲を移動</translation>
    </message>
    <message>
        <source>Double click</source>
        <translation>ダブルクリック</translation>
    </message>
    <message>
        <source>shows everything again; in a result map in the quantity&apos;s own colours</source>
        <translation>全体表示に戻す。結果マップでは色の範囲も量に固有のものに戻る</translation>
    </message>
    <message>
        <source>Shift and double click</source>
        <translation>Shift を押しながらダブルクリック</translation>
    </message>
    <message>
        <source>result map: colours from the smallest to the largest value shown</source>
        <translation>結果マップ: 色の範囲を表示中の値の最小から最大まで</translation>
    </message>
    <message>
        <source>Control and double click</source>
        <translation>Control を押しながらダブルクリック</translation>
    </message>
    <message>
        <source>result map: colours from the 2nd to the 98th percentile of them</source>
        <translation>結果マップ: 色の範囲を表示中の値の 2～98 パーセンタイルに</translation>
    </message>
    <message>
        <source>Drag an end of the colour bar</source>
        <translation>カラーバーの端をドラッグ</translation>
    </message>
    <message>
        <source>stretches the colours; a double click on the bar undoes it</source>
        <translation>色を伸縮。バーのダブルクリックで元に戻る</translation>
    </message>
    <message>
        <source>Right click on the colour bar</source>
        <translation>カラーバーを右クリック</translation>
    </message>
    <message>
        <source>other colours, limits by percentile</source>
        <translation>別の配色、パーセンタイルによる上下限</translation>
    </message>
    <message>
        <source>Drag a marker</source>
        <translation>マーカーをドラッグ</translation>
    </message>
    <message>
        <source>moves the edge, a range or an energy without a map; a click moves nothing</source>
        <translation>吸収端、範囲、マップのないエネルギーを移動。クリックでは何も動かない</translation>
    </message>
    <message>
        <source>Click in &quot;Muts&quot;</source>
        <translation>「全スペクトル」をクリック</translation>
    </message>
    <message>
        <source>writes the values of all spectra there into the message area</source>
        <translation>その位置での全スペクトルの値をメッセージ欄に書く</translation>
    </message>
    <message>
        <source>How to</source>
        <translation>操作方法</translation>
    </message>
    <message>
        <source>Control and drag</source>
        <translation>Control を押しながらドラッグ</translation>
    </message>
    <message>
        <source>result map: a region; its mean spectrum and fit are shown</source>
        <translation>結果マップ：領域を選び、平均スペクトルとフィットを表示する</translation>
    </message>
</context>
<context>
    <name>NumberTyping</name>
    <message>
        <source>This is no number; it counts as 0.</source>
        <translation>数値ではないため 0 として扱います。</translation>
    </message>
    <message>
        <source>%1 or %2? It counts as 0.</source>
        <translation>%1 ですか、%2 ですか？ 0 として扱います。</translation>
    </message>
</context>
<context>
    <name>Plan</name>
    <message>
        <source>Planning needs at least two references.</source>
        <translation>計画には参照試料が二つ以上必要です。</translation>
    </message>
    <message>
        <source>Reference %1 reaches from %2 to %3 eV and not to %4 eV, which &quot;%5&quot; asks for.</source>
        <translation>参照試料 %1 の範囲は %2 から %3 eV で、「%5」が求める %4 eV を含みません。</translation>
    </message>
    <message>
        <source>There are no candidates between %1 and %2 eV.</source>
        <translation>%1 から %2 eV の間に候補のエネルギーがありません。</translation>
    </message>
    <message>
        <source>The step makes more than %1 candidates.</source>
        <translation>この刻みでは候補が %1 個を超えます。</translation>
    </message>
    <message>
        <source>%1 energies are too few: the method wants %2 or more.</source>
        <translation>エネルギーが %1 点では足りません。この方法には %2 点以上が必要です。</translation>
    </message>
    <message>
        <source>%1 energies are too many: the method knows %2.</source>
        <translation>エネルギーが %1 点では多すぎます。この方法では %2 点までです。</translation>
    </message>
    <message>
        <source>%1 energies are to be kept, more than the %2 that are planned.</source>
        <translation>残すエネルギーが %1 点あり、計画する %2 点を超えています。</translation>
    </message>
    <message>
        <source>Reference %1 has no edge jump: its pre-edge or post-edge range holds too few points.</source>
        <translation>参照試料 %1 のエッジジャンプが求められません。プリエッジまたはポストエッジの範囲の点が足りません。</translation>
    </message>
    <message>
        <source>References %1 and %2 are alike: no energies can tell them apart.</source>
        <translation>参照試料 %1 と %2 は同じ形をしています。どのエネルギーでも区別できません。</translation>
    </message>
    <message>
        <source>Reference %1 is a mixture of the others: no energies can tell them apart.</source>
        <translation>参照試料 %1 は他の参照試料の混合になっています。どのエネルギーでも区別できません。</translation>
    </message>
    <message>
        <source>No candidates determine the fit.</source>
        <translation>フィットが定まる候補の組がありません。</translation>
    </message>
    <message>
        <source>Planning was stopped.</source>
        <translation>計画を中止しました。</translation>
    </message>
    <message>
        <source>ends + largest reference differences</source>
        <translation>両端と参照試料の差が最大の点</translation>
    </message>
    <message>
        <source>background</source>
        <translation>バックグラウンド</translation>
    </message>
    <message>
        <source>amount and background</source>
        <translation>量とバックグラウンド</translation>
    </message>
    <message>
        <source>%1 against %2</source>
        <translation>%1 と %2 の区別</translation>
    </message>
    <message>
        <source>planned</source>
        <translation>計画</translation>
    </message>
    <message>
        <source> energy/eV  share/%  separates</source>
        <translation> エネルギー/eV  配分/%  役割</translation>
    </message>
    <message>
        <source>fractions and thickness: sigma_V at equal shares, at these shares, change of V per 0.1 eV of wrong energy; sigma_f per reference</source>
        <translation>割合と厚さ: 均等配分での sigma_V、この配分での sigma_V、エネルギーの誤り 0.1 eV あたりの V の変化、参照試料ごとの sigma_f</translation>
    </message>
    <message>
        <source>sigma_V at equal shares, at the best shares, change of V per 0.1 eV; energies/eV</source>
        <translation>均等配分での sigma_V、最良の配分での sigma_V、0.1 eV あたりの V の変化、エネルギー/eV</translation>
    </message>
    <message>
        <source>The same by the number of energies, each planned:</source>
        <translation>エネルギーの数ごとに計画した場合:</translation>
    </message>
    <message>
        <source>detection limits of the fractions: %1</source>
        <translation>割合の検出限界: %1</translation>
    </message>
    <message>
        <source>valence that the method misses without any noise: %1</source>
        <translation>ノイズがなくても生じる価数の誤差: %1</translation>
    </message>
    <message>
        <source>* too few energies to be planned with a background term more</source>
        <translation>* バックグラウンドの項を一つ増やして計画するにはエネルギーが足りません</translation>
    </message>
    <message>
        <source>share of the exposure/%</source>
        <translation>露光の配分/%</translation>
    </message>
    <message>
        <source>energy/eV</source>
        <translation>エネルギー/eV</translation>
    </message>
    <message>
        <source>references in edge jumps</source>
        <translation>参照試料(エッジジャンプ単位)</translation>
    </message>
    <message>
        <source>error of V if moved here</source>
        <translation>ここに移したときの V の誤差</translation>
    </message>
    <message>
        <source>planned with one background term more than the fit has</source>
        <translation>フィットよりバックグラウンドの項を一つ増やして計画しました</translation>
    </message>
    <message>
        <source>planned with the background of the fit, without a term more</source>
        <translation>項を増やさず、フィットと同じバックグラウンドで計画しました</translation>
    </message>
    <message>
        <source>Candidates %2 eV apart: %1 found, %3 energies wanted.</source>
        <translation>%2 eV 離れた候補は %1 点で、必要な %3 点に足りません。</translation>
    </message>
    <message>
        <source>%1 eV is to be kept, but lies outside of %2 to %3 eV.</source>
        <translation>残すエネルギー %1 eV が %2 から %3 eV の範囲にありません。</translation>
    </message>
    <message>
        <source>%1 and %2 eV are to be kept, but the spacing asks for %3 eV between energies.</source>
        <translation>残すエネルギー %1 eV と %2 eV の間隔が、指定の %3 eV より狭くなっています。</translation>
    </message>
    <message>
        <source>%1: %2 eV stands there twice.</source>
        <translation>%1：%2 eV が二度書かれています。</translation>
    </message>
    <message>
        <source>these energies find a valence of %2 in a sample of %1 alone, which has %3</source>
        <translation>これらのエネルギーでは、%1 だけの試料の価数が %3 でなく %2 と求まります</translation>
    </message>
    <message>
        <source>method: %1</source>
        <translation>方法: %1</translation>
    </message>
    <message>
        <source>method: %1; it knows two references, %2, and not %3</source>
        <translation>方法: %1（参照試料は %2 の二つを使い、%3 は使いません）</translation>
    </message>
    <message>
        <source>non-equivalent, linear background</source>
        <translation>非等価法、直線バックグラウンド</translation>
    </message>
    <message>
        <source>non-equivalent, Victoreen background</source>
        <translation>非等価法、ビクトリーン型バックグラウンド</translation>
    </message>
    <message>
        <source>four points, least squares</source>
        <translation>4 点法、最小二乗</translation>
    </message>
    <message>
        <source>four points, exact</source>
        <translation>4 点法、厳密解</translation>
    </message>
</context>
<context>
    <name>PopBase</name>
    <message>
        <source>Frame</source>
        <translation>フレーム</translation>
    </message>
</context>
<context>
    <name>RegionsView</name>
    <message>
        <source>Regions</source>
        <translation>領域</translation>
    </message>
    <message>
        <source>Mean valence, weighted with the amounts, and mean amount per pixel; scatter of the valences and what the noise explains of it; chi² / (n - p) of the mean spectrum</source>
        <translation>総量で重み付けした平均価数と画素あたりの平均総量、価数のばらつきとそのうちノイズで説明できる分、平均スペクトルの χ² / (n - p)</translation>
    </message>
    <message>
        <source>A click chooses the region whose spectrum is shown; corners in pixels, amount: the sum over the region, mean: weighted with the amounts, ±: its standard error</source>
        <translation>クリックした領域のスペクトルを表示する。角の座標は画素、総量は領域内の和、平均は総量の重み付き、± はその標準誤差</translation>
    </message>
    <message>
        <source>Copy table</source>
        <translation>表をコピー</translation>
    </message>
    <message>
        <source>Remove this region</source>
        <translation>この領域を消去</translation>
    </message>
    <message>
        <source>Regions: clear</source>
        <translation>領域：すべて消去</translation>
    </message>
    <message>
        <source>Region %1</source>
        <translation>領域 %1</translation>
    </message>
    <message>
        <source>Pixel %1, %2</source>
        <translation>画素 %1, %2</translation>
    </message>
    <message>
        <source>No region: drag one with Control in the result map.</source>
        <translation>領域がありません：結果マップを Control キーを押しながらドラッグしてください。</translation>
    </message>
    <message>
        <source>Energy [eV]</source>
        <translation>エネルギー [eV]</translation>
    </message>
    <message>
        <source>Absorption</source>
        <translation>吸収</translation>
    </message>
    <message>
        <source>Residual / s</source>
        <translation>残差 / s</translation>
    </message>
    <message>
        <source>Fit</source>
        <translation>フィット</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>バックグラウンド</translation>
    </message>
</context>
<context>
    <name>cBar</name>
    <message>
        <source>Frame</source>
        <translation>フレーム</translation>
    </message>
    <message>
        <source>Drag an end of the colours to stretch them, double-click to undo the stretch, right-click for other colours</source>
        <translation>端をドラッグすると色が伸縮し、ダブルクリックで元に戻る。右クリックで別の配色</translation>
    </message>
</context>
</TS>
